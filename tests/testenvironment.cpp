// SPDX-License-Identifier: MIT
// Part of every test program: whoever starts it, from wherever, it has a store of its own and needs no
// display.
#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <cerrno>

namespace {

[[gnu::constructor]] void setEnvironment()
{
    const QByteArray home = QByteArray(QUENDA_TEST_HOMES "/") + program_invocation_short_name;
    const QString run = QFile::decodeName(home + "/run");
    QDir(QFile::decodeName(home)).removeRecursively();
    QDir().mkpath(run);
    QFile::setPermissions(run, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    qputenv("HOME", home);
    qputenv("XDG_CONFIG_HOME", home + "/config");
    qputenv("XDG_CACHE_HOME", home + "/cache");
    qputenv("XDG_CONFIG_DIRS", home + "/none");
    qputenv("XDG_RUNTIME_DIR", home + "/run");
    qputenv("QUENDA_PROGRAM", QUENDA_TEST_PROGRAM);
    qputenv("QUENDA_SOURCES", QUENDA_TEST_SOURCES);
    for (const auto& [name, value] :
         {std::pair("QT_QPA_PLATFORM", "offscreen"), std::pair("QT_LOGGING_RULES", "qt.qpa.*=false")}) {
        if (qEnvironmentVariableIsEmpty(name)) {
            qputenv(name, value);
        }
    }
}

QtMessageHandler nextHandler = nullptr;

void handle(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    // Said by the plugin for each window, without a category that could be turned off.
    if (text != QLatin1StringView("This plugin does not support propagateSizeHints()")) {
        nextHandler(type, context, text);
    }
}

/// Stands in front of the test library's handler of messages, which comes after the application object.
class Quiet : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* /*receiver*/, QEvent* /*event*/) override
    {
        const auto current = qInstallMessageHandler(handle);
        nextHandler = current == handle ? nextHandler : current;
        return false;
    }
};

void beQuiet()
{
    auto* application = QCoreApplication::instance();
    application->installEventFilter(new Quiet(application));
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(beQuiet) // NOLINT(cert-err58-cpp): the toolkit's
