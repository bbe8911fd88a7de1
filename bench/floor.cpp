// SPDX-License-Identifier: MIT
// floor PAGE: the least program with a main window that shows the page. What the viewer needs beyond it is
// its own.
#include <QApplication>
#include <QFile>
#include <QMainWindow>
#include <QTextBrowser>

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    QMainWindow window;
    auto* browser = new QTextBrowser(&window);
    window.setCentralWidget(browser);
    QFile file(QString::fromLocal8Bit(argc > 1 ? argv[1] : ""));
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("usage: floor PAGE");
    }
    browser->setHtml(QString::fromUtf8(file.readAll()));
    window.resize(590, 400);
    window.show();
    return QApplication::exec();
}
