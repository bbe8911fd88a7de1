// SPDX-License-Identifier: MIT
// The program itself, for tst_viewer: as soon as QUENDA_SETS help sets are open it writes what the window
// shows, and ends as the user would, or with the exit status QUENDA_STATUS.
#include <QAction>
#include <QApplication>
#include <QMainWindow>
#include <QMenu>
#include <QTextEdit>
#include <QTimer>
#include <QTreeView>

#include <cstdio>

namespace {

QMainWindow* shownWindow()
{
    for (auto* widget : QApplication::topLevelWidgets()) {
        auto* window = qobject_cast<QMainWindow*>(widget);
        if (window != nullptr && window->isVisible()) {
            return window;
        }
    }
    return nullptr;
}

QStringList titles(const QMainWindow& window)
{
    QStringList texts;
    for (const auto* entry : window.findChild<QMenu*>(QStringLiteral("removeMenu"))->actions()) {
        texts += entry->text();
    }
    return texts;
}

/// False while there is something to wait for.
bool tell()
{
    auto* window = shownWindow();
    if (window == nullptr || titles(*window).size() < qEnvironmentVariableIntValue("QUENDA_SETS")) {
        return false;
    }
    const QStringList shown{titles(*window).join(u','),
                            window->findChild<QTextEdit*>()->toPlainText().trimmed(),
                            window->findChild<QTreeView*>()->currentIndex().data().toString()};
    std::printf("%s\n", qUtf8Printable(shown.join(u'|')));
    if (qEnvironmentVariableIsSet("QUENDA_STATUS")) {
        QCoreApplication::exit(qEnvironmentVariableIntValue("QUENDA_STATUS"));
    } else {
        window->findChild<QAction*>(QStringLiteral("fileExitAction"))->trigger();
    }
    return true;
}

void watch()
{
    auto* timer = new QTimer(QCoreApplication::instance());
    QObject::connect(timer, &QTimer::timeout, timer, [timer] {
        if (tell()) {
            timer->stop();
        }
    });
    timer->start(1);
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(watch) // NOLINT(cert-err58-cpp): the toolkit's
