// SPDX-License-Identifier: MIT
#include "mainwindow/pageprinter.h"
#include "testfiles.h"

#include <QApplication>
#include <QImage>
#include <QPageRanges>
#include <QPrinter>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

namespace {

// Of a sheet A4 in points; pixels are 0.75 points.
constexpr double BodyTop = 72;
constexpr double BodyRight = (793 - 96) * 0.75;
constexpr double BodyBottom = (1123 - 96) * 0.75;

struct Word {
    QString text;
    double xMin, yMin, xMax, yMax;
};

QByteArray output(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    return process.waitForFinished() ? process.readAllStandardOutput() : QByteArray();
}

PrintablePage makePage(const QString& html)
{
    PrintablePage page;
    page.content = {html, true};
    page.title = QStringLiteral("Margins & <more>");
    page.font = QFont(QStringLiteral("DejaVu Sans"), 10);
    return page;
}

} // namespace

class TestPrinting : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void numberBelowTheText();
    void noLineIsLost_data();
    void noLineIsLost();
    void pictureIsPrintedAndFits();
    void rightEdges_data();
    void rightEdges();
    void chosenSheets();
    void onlyLocalFilesAreRead();
    void blackOnWhite();
    void links();
    void failures();
    void suggestedNames_data();
    void suggestedNames();

private:
    /// Prints on A4; the PDF file.
    QString print(const PrintablePage& page)
    {
        const QString file = m_files.path(QStringLiteral("out.pdf"));
        QPrinter printer(QPrinter::ScreenResolution);
        PagePrinter::prepare(printer, page.title);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(file);
        printer.setPageSize(QPageSize(QPageSize::A4));
        return PagePrinter::paint(printer, page) ? file : QString();
    }

    /// The words of each sheet.
    static QList<QList<Word>> words(const QString& pdf)
    {
        static const QRegularExpression line(QStringLiteral(
            R"re(<(page) |<word xMin="([\d.]+)" yMin="([\d.]+)" xMax="([\d.]+)" yMax="([\d.]+)">(.*)</word>)re"));
        QList<QList<Word>> sheets;
        const QString text =
            QString::fromUtf8(output(QStringLiteral("pdftotext"), {u"-bbox"_qs, pdf, u"-"_qs}));
        for (const auto& match : line.globalMatch(text)) {
            if (!match.captured(1).isEmpty()) {
                sheets.append(QList<Word>());
            } else {
                sheets.last().append({match.captured(6), match.captured(2).toDouble(),
                                      match.captured(3).toDouble(), match.captured(4).toDouble(),
                                      match.captured(5).toDouble()});
            }
        }
        return sheets;
    }

    /// The first sheet at 72 dots per inch, that is, one pixel per point.
    QImage picture(const QString& pdf)
    {
        const QString root = m_files.path(QStringLiteral("sheet"));
        output(QStringLiteral("pdftoppm"), {u"-r"_qs, u"72"_qs, u"-singlefile"_qs, pdf, root});
        return QImage(root + u".ppm");
    }

    TemporaryFiles m_files;
};

void TestPrinting::initTestCase()
{
    if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty()) {
        QSKIP("needs poppler-utils");
    }
}

void TestPrinting::numberBelowTheText()
{
    const QString pdf = print(makePage(QStringLiteral("<p>Short</p>")));
    const auto sheets = words(pdf);
    QCOMPARE(sheets.size(), 1);
    QCOMPARE(sheets[0].size(), 2);
    QVERIFY(qAbs(sheets[0][0].xMin - 72) < 1.5);
    const auto& number = sheets[0][1];
    QCOMPARE(number.text, u"1");
    QVERIFY2(qAbs(number.xMax - BodyRight) < 1, qPrintable(QString::number(number.xMax)));
    QVERIFY2(qAbs(number.yMin - (BodyBottom + 5 * 0.75)) < 2, qPrintable(QString::number(number.yMin)));
    const QByteArray info = output(QStringLiteral("pdfinfo"), {pdf});
    QVERIFY2(info.contains("Margins & <more>"), info.constData());
    QVERIFY2(info.contains("(A4)"), info.constData());
}

void TestPrinting::noLineIsLost_data()
{
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("end");
    QTest::newRow("paragraphs") << u"<h1>Title</h1>"_qs << u"<p>line%1</p>"_qs << QString();
    QTest::newRow("code") << u"<pre>"_qs << u"line%1\n"_qs << u"</pre>"_qs;
    QTest::newRow("wrapped") << u"<pre>"_qs << QString(u"line%1 "_qs + u"and more "_qs.repeated(12) + u'\n')
                             << u"</pre>"_qs;
    QTest::newRow("breaks") << u"<p>"_qs << u"line%1<br>"_qs << u"</p>"_qs;
    QTest::newRow("table") << u"<table border=1>"_qs << u"<tr><td>line%1<td>x</tr>"_qs << u"</table>"_qs;
    QTest::newRow("cells")
        << u"<table>"_qs
        << u"<tr><td>line%1 and many more words to fill several rows of one cell of the table"
           "<td>this cell, too, is to have more than one row</tr>"_qs
        << u"</table>"_qs;
    QTest::newRow("list") << u"<ul>"_qs << u"<li>line%1"_qs << u"</ul>"_qs;
    QTest::newRow("large") << u"<p style='font-size:30pt'>"_qs << u"line%1 "_qs << u"</p>"_qs;
}

void TestPrinting::noLineIsLost()
{
    QFETCH(QString, start);
    QFETCH(QString, line);
    QFETCH(QString, end);
    constexpr int count = 1000;
    QString html = start;
    for (int i = 0; i < count; ++i) {
        html += line.arg(i, 4, 10, QChar(u'0'));
    }
    const auto sheets = words(print(makePage(html + end)));
    QVERIFY(sheets.size() > 12);
    int next = 0;
    for (qsizetype i = 0; i < sheets.size(); ++i) {
        QCOMPARE(sheets[i].constLast().text, QString::number(i + 1));
        for (const auto& word : sheets[i]) {
            if (word.text.startsWith(u"line")) {
                QCOMPARE(word.text, u"line%1"_qs.arg(next++, 4, 10, QChar(u'0')));
                QVERIFY(word.yMin > BodyTop - 4 && word.yMax < BodyBottom + 4);
            }
        }
    }
    QCOMPARE(next, count);
}

void TestPrinting::pictureIsPrintedAndFits()
{
    QImage image(3000, 1500, QImage::Format_RGB32);
    image.fill(Qt::green);
    QVERIFY(image.save(m_files.path(QStringLiteral("wide.png"))));
    auto page = makePage(QStringLiteral("<p>Above <img src='wide.png'> below</p>"));
    page.baseUrl = QUrl::fromLocalFile(m_files.path(QStringLiteral("page.html")));
    const QString pdf = print(page);
    const auto sheets = words(pdf);
    QCOMPARE(sheets.size(), 1);
    QVERIFY(sheets[0][0].yMin < 72 + 4);
    const QImage sheet = picture(pdf);
    const auto isGreen = [&sheet](int x) { return sheet.pixelColor(x, 72 + 100).hslSaturation() > 250; };
    QVERIFY(isGreen(75));
    QVERIFY(isGreen(int(BodyRight) - 3));
    QVERIFY(!isGreen(int(BodyRight) + 3));
}

void TestPrinting::rightEdges_data()
{
    QTest::addColumn<QString>("html");
    QTest::addColumn<int>("pictures");
    const auto picture = u"<img src='edge.png'>"_qs;
    QTest::newRow("alone") << picture << 1;
    QTest::newRow("row of a table") << u"<table border=1 cellpadding=9><tr><td>a<td>"_qs + picture + u"<td>" +
                                           picture + u"</table>"
                                    << 2;
    QTest::newRow("table in a cell") << u"<table><tr><td><table><tr><td>"_qs + picture + u"<td>" + picture +
                                            u"</table><td>" + picture
                                     << 3;
    QTest::newRow("nested lists") << u"<ul><li>a<ul><li>b<ol><li>"_qs + picture + u"</ol></ul></ul>" << 1;
    QTest::newRow("indented") << u"<blockquote><div style='margin-left:50px'>"_qs + picture << 1;
    QTest::newRow("small ones") << u"<table><tr><td><img src='edge.png' width=90><td>"_qs + picture << 2;
    QTest::newRow("beside a wide table")
        << u"<table><tr>"_qs + u"<td>unbroken"_qs.repeated(16) + u"<td>" + picture + u"<td>end</table>" << 1;
}

/// Nothing is lost at the right of a sheet.
void TestPrinting::rightEdges()
{
    QFETCH(QString, html);
    QFETCH(int, pictures);
    QImage image(2000, 400, QImage::Format_RGB32);
    image.fill(Qt::green);
    for (int x = 1800; x < image.width(); ++x) {
        for (int y = 0; y < image.height(); ++y) {
            image.setPixelColor(x, y, Qt::blue);
        }
    }
    QVERIFY(image.save(m_files.path(QStringLiteral("edge.png"))));
    auto page = makePage(html);
    page.baseUrl = QUrl::fromLocalFile(m_files.path(QStringLiteral("page.html")));
    const QString pdf = print(page);
    const QImage sheet = picture(pdf);
    int most = 0;
    for (int y = 0; y < sheet.height(); ++y) {
        int runs = 0;
        for (int x = 1; x < sheet.width(); ++x) {
            const auto isBlue = [&](int at) {
                return sheet.pixelColor(at, y).blue() > 200 && sheet.pixelColor(at, y).red() < 99;
            };
            runs += isBlue(x) && !isBlue(x - 1) ? 1 : 0;
            QVERIFY(!isBlue(x) || x < BodyRight + 3);
        }
        most = qMax(most, runs);
    }
    QCOMPARE(most, pictures);
    const auto printed = words(pdf).first();
    for (const auto& word : printed) {
        QVERIFY2(word.xMax < BodyRight + 3, qPrintable(word.text));
    }
}

void TestPrinting::chosenSheets()
{
    const QString file = m_files.path(QStringLiteral("some.pdf"));
    const auto page = makePage(QStringLiteral("<p>Text</p>").repeated(300));
    const auto printed = [&](const QString& ranges) {
        QPrinter printer(QPrinter::ScreenResolution);
        PagePrinter::prepare(printer, page.title);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(file);
        printer.setPrintRange(QPrinter::PageRange);
        printer.setPageRanges(QPageRanges::fromString(ranges));
        QStringList numbers;
        if (PagePrinter::paint(printer, page)) {
            for (const auto& sheet : words(file)) {
                numbers += sheet.last().text;
            }
        }
        return numbers.join(u' ');
    };
    QCOMPARE(printed({}), u"1 2 3 4 5 6 7 8 9 10"_qs);
    QCOMPARE(printed(u"2-3,5"_qs), u"2 3 5"_qs);
    QCOMPARE(printed(u"7-99"_qs), u"7 8 9 10"_qs);
    QCOMPARE(printed(u"99"_qs), QString());
}

/// A pipe would keep the reader waiting for ever.
void TestPrinting::onlyLocalFilesAreRead()
{
    const QString pipe = m_files.path(QStringLiteral("pipe.png"));
    QCOMPARE(::mkfifo(qPrintable(pipe), 0600), 0);
    auto page =
        makePage(QStringLiteral("<link rel=stylesheet href='%1'><p>Text <img src='%1'><img src='pipe.png'>"
                                "<img src='http://127.0.0.1/x.png'><img src='/dev/zero'></p>")
                     .arg(pipe));
    page.baseUrl = QUrl::fromLocalFile(m_files.path(QStringLiteral("page.html")));
    QCOMPARE(words(print(page)).size(), 1);
}

void TestPrinting::blackOnWhite()
{
    const QPalette before = QApplication::palette();
    QApplication::setPalette(QPalette(QColor(0x30, 0x30, 0x30)));
    const QStringList pages = {u"<p style='font-size:60pt'>III</p>"_qs,
                               u"<body bgcolor=black text=white><p style='font-size:60pt'>III</p>"_qs};
    for (const auto& html : pages) {
        const QImage sheet = picture(print(makePage(html)));
        int black = 0;
        int white = 0;
        for (int y = 0; y < sheet.height(); ++y) {
            for (int x = 0; x < sheet.width(); ++x) {
                const int value = sheet.pixelColor(x, y).lightness();
                black += value < 10 ? 1 : 0;
                white += value > 250 ? 1 : 0;
            }
        }
        QVERIFY(black > 300);
        QVERIFY(white > 400000);
    }
    QApplication::setPalette(before);
}

void TestPrinting::links()
{
    auto page = makePage(QStringLiteral("<p><a href='link:0'>IIIII</a> <a href='link:1'>page</a></p>"));
    page.links = {{QStringLiteral("http://example.org/a"), {}}, {QStringLiteral("b.html"), {}}};
    page.font.setPointSize(60);
    page.styleSheet = QStringLiteral("a{color:#ff0000;text-decoration:none}");
    const QString pdf = print(page);
    QFile file(pdf);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    QVERIFY(bytes.contains("http://example.org/a"));
    QVERIFY(!bytes.contains("b.html"));
    QVERIFY(!bytes.contains("link:"));
    const QImage sheet = picture(pdf);
    int blue = 0;
    int red = 0;
    for (int y = 0; y < 200; ++y) {
        for (int x = 0; x < sheet.width(); ++x) {
            blue += sheet.pixelColor(x, y) == QColor(Qt::blue) ? 1 : 0;
            red += sheet.pixelColor(x, y) == QColor(Qt::red) ? 1 : 0;
        }
    }
    QVERIFY(blue > 300);
    QCOMPARE(red, 0);
}

void TestPrinting::failures()
{
    const auto page = makePage(QStringLiteral("<p>Text</p>").repeated(200));
    QVERIFY(PagePrinter::exportPdf(m_files.path(QStringLiteral("good.pdf")), page));
    QTest::ignoreMessage(QtWarningMsg, "QPainter::begin(): Returned false");
    QVERIFY(!PagePrinter::exportPdf(m_files.path(QStringLiteral("none/out.pdf")), page));
    QTest::ignoreMessage(QtWarningMsg, "QPainter::begin(): Returned false");
    QVERIFY(!PagePrinter::exportPdf(m_files.path(QString()), page));
}

void TestPrinting::suggestedNames_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("name");
    QTest::newRow("plain") << u"CREATE TABLE"_qs << u"CREATE TABLE.pdf"_qs;
    QTest::newRow("path") << u"../etc/pass\nwd"_qs << u"etc_pass wd.pdf"_qs;
    QTest::newRow("hidden") << u".bashrc"_qs << u"bashrc.pdf"_qs;
    QTest::newRow("unsafe") << u"a:b*c?\"<>|d"_qs << u"a_b_c_d.pdf"_qs;
    QTest::newRow("national") << u"Übersicht"_qs << u"Übersicht.pdf"_qs;
    QTest::newRow("none") << QString() << u"page.pdf"_qs;
    QTest::newRow("dots") << u" .. "_qs << u"page.pdf"_qs;
    QTest::newRow("long") << u"x"_qs.repeated(500) << QString(u"x"_qs.repeated(80) + u".pdf");
    QTest::newRow("directory") << u"taken"_qs << u"taken_.pdf"_qs;
}

void TestPrinting::suggestedNames()
{
    QFETCH(QString, title);
    QFETCH(QString, name);
    const QTemporaryDir folder;
    qputenv("HOME", folder.path().toUtf8());
    const QDir home = QDir::home();
    QVERIFY(home.mkpath(QStringLiteral("taken.pdf")));
    QCOMPARE(PagePrinter::suggestedPdfName(title), home.filePath(name));
}

QTEST_MAIN(TestPrinting)
#include "tst_printing.moc"
