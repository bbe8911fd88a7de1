// SPDX-License-Identifier: MIT
#include "textset.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <vector>

namespace {

constexpr int WordsOnPage = 440;
constexpr int WordsInParagraph = 44;
constexpr int BookSize = 20;
constexpr int DirectorySize = 1000;
constexpr size_t VocabularySize = 40'000;

constexpr std::array syllables{"a", "be", "con", "de", "er", "fi", "gra", "in", "lo", "men", "ne", "or"};

class Language {
public:
    Language()
    {
        double sum = 0;
        for (size_t rank = 0; rank < VocabularySize; ++rank) {
            m_words.push_back(spell(rank));
            sum += 1 / std::pow(double(rank) + 2, 1.15);
            m_sums.push_back(sum);
        }
    }
    const QByteArray& word()
    {
        // The distributions of the library are not the same everywhere.
        const double at = double(m_random()) / double(std::mt19937::max()) * m_sums.back();
        const auto found = std::lower_bound(m_sums.begin(), m_sums.end(), at);
        return m_words[std::min(size_t(found - m_sums.begin()), VocabularySize - 1)];
    }

private:
    /// The more usual a word, the shorter.
    static QByteArray spell(size_t rank)
    {
        QByteArray word;
        for (size_t rest = rank + 1; rest > 0; rest /= syllables.size()) {
            word += syllables[rest % syllables.size()];
        }
        return word;
    }

    std::vector<QByteArray> m_words;
    std::vector<double> m_sums;
    std::mt19937 m_random{1};
};

void write(const QString& name, const QByteArray& bytes)
{
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        qFatal("cannot write %s", qUtf8Printable(name));
    }
}

QByteArray page(int number, const QByteArray& title, Language& language)
{
    QByteArray text = "<!DOCTYPE html><html lang=\"en\"><head><meta charset=\"utf-8\"><title>" + title +
                      "</title><link rel=\"stylesheet\" href=\"style.css\"></head><body>\n"
                      "<div class=\"navbar\"><a href=\"../index.html\">Up</a></div><h1>" +
                      title + "</h1>\n<p>everywhere" + (number % 10 == 0 ? " tenth" : "") +
                      (number == 777 ? " once" : "");
    for (int i = 1; i < WordsOnPage; ++i) {
        const bool isEnd = i % WordsInParagraph == 0;
        text += isEnd && i % (3 * WordsInParagraph) == 0 ? ".</p>\n<h2>" + language.word() + "</h2>\n<p>"
                : isEnd                                  ? QByteArray(".</p>\n<p>")
                                                         : QByteArray(" ");
        text += i % 30 == 0 ? "<code>" + language.word() + "</code>" : language.word();
    }
    return text + ".</p></body></html>\n";
}

} // namespace

QString writeTextSet(const QString& dir, int pages)
{
    Language language;
    QByteArray contents(":title = Text\n");
    for (int i = 0; i < pages; ++i) {
        const QString directory = QString::number(i / DirectorySize);
        if (i % DirectorySize == 0) {
            QDir().mkpath(dir + u'/' + directory);
        }
        if (i % BookSize == 0) {
            contents += "Book " + QByteArray::number(i / BookSize) + '\n';
        }
        const QByteArray title = language.word() + ' ' + language.word() + ' ' + QByteArray::number(i);
        const QString name = directory + QStringLiteral("/page%1.html").arg(i);
        contents += ' ' + title + " = " + name.toLatin1() + '\n';
        write(dir + u'/' + name, page(i, title, language));
    }
    write(dir + QStringLiteral("/text.cnt"), contents);
    return dir + QStringLiteral("/text.cnt");
}
