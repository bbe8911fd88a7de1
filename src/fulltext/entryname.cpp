// SPDX-License-Identifier: MIT
#include "fulltext/entryname.h"

#include "fulltext/foldedcharacters.h"

#include <QList>
#include <QString>

#include <algorithm>
#include <array>

namespace {

constexpr qsizetype LongestText = 400; // UTF-16 code units that are looked at
constexpr qsizetype LongestNumber = 8; // "12.10.3."
constexpr qsizetype MostInitials = 6;
constexpr qsizetype LeastAfterArticle = 2;
constexpr qsizetype LongestLiteral = 32;
constexpr qsizetype MostOwners = 2;
constexpr char16_t FirstWide = 0xFF01; // "!" of full width
constexpr char16_t LastWide = 0xFF5E;
constexpr int MostWordsBefore = 2; // of a number: "Chapter 5."

bool isPartSign(QChar c)
{
    return c == u'.' || c == u':' || c == u'#' || c == u'/';
}

bool isNumber(QStringView word)
{
    const bool isShort = word.size() > 1 && word.size() <= LongestNumber && word.back() == u'.';
    const bool hasDigits = std::any_of(word.begin(), word.end(), [](QChar c) { return c.isDigit(); });
    const bool isPlain = std::all_of(word.begin(), word.end(), [](QChar c) {
        return c == u'.' || c.isDigit() || (c >= u'A' && c <= u'Z');
    });
    return isShort && isPlain && (hasDigits || word.size() <= 5);
}

/// Without "5.2.", "A.", "Chapter 5.".
QStringView withoutNumber(QStringView text)
{
    qsizetype at = 0;
    for (int i = 0; i < MostWordsBefore; ++i) {
        qsizetype end = text.indexOf(u' ', at);
        const qsizetype hard = text.indexOf(QChar::Nbsp, at);
        end = end < 0 || (hard >= 0 && hard < end) ? hard : end;
        if (end < 0) {
            return text;
        }
        if (isNumber(text.sliced(at, end - at))) {
            return text.sliced(end + 1).trimmed();
        }
        at = end + 1;
    }
    return text;
}

/// With the signs of ASCII for those of full width.
QString halfWidth(QStringView text)
{
    QString half = text.toString();
    for (auto& c : half) {
        c = c >= FirstWide && c <= LastWide ? QChar(c.unicode() - FirstWide + u'!') : c;
    }
    return half;
}

/// Without what a template is made for: "std::vector<T, Allocator>::size".
QString withoutArguments(QStringView text)
{
    QString bare;
    int depth = 0;
    for (const QChar c : text) {
        const bool isBehindName =
            !bare.isEmpty() && (bare.back().isLetterOrNumber() || bare.back() == u'.' || bare.back() == u'_');
        const bool opens =
            c == u'<' && (depth > 0 || (isBehindName && !bare.endsWith(u"operator") && text.contains(u'>')));
        depth += opens ? 1 : 0;
        if (depth == 0) {
            bare += c;
        }
        depth -= c == u'>' && depth > 0 ? 1 : 0;
    }
    return bare;
}

/// Where the name ends and what is said about it begins.
qsizetype headEnd(QStringView text)
{
    static constexpr std::array<QStringView, 6> borders{u" \u2014 ", u" \u2013 ", u" - ",
                                                        u" -- ",     u", ",       u": "};
    qsizetype end = text.size();
    for (const auto border : borders) {
        const qsizetype at = text.indexOf(border);
        end = at > 0 ? std::min(end, at) : end;
    }
    // Not the brackets of operators.
    const qsizetype bracket = text.indexOf(u'(');
    return bracket > 0 && !text.first(bracket).endsWith(u"operator") ? std::min(end, bracket) : end;
}

/// The parts of a name that signs divide: "std", "vector", "push_back".
QList<QStringView> partsOf(QStringView name)
{
    QList<QStringView> parts;
    qsizetype begin = 0;
    for (qsizetype i = 0; i <= name.size(); ++i) {
        if (i == name.size() || isPartSign(name[i])) {
            if (i > begin) {
                parts.append(name.sliced(begin, i - begin));
            }
            begin = i + 1;
        }
    }
    return parts;
}

bool isNameCharacter(QChar c)
{
    return c.isLetterOrNumber() || c == u'_' || isPartSign(c);
}

/// What an explanation may say that the name belongs to: "Thread" of "(Method in class java.lang.Thread)",
/// "dict" and "method" of "(dict method)".
QList<QStringView> ownersIn(QStringView explanation)
{
    QList<QStringView> owners;
    qsizetype begin = -1;
    for (qsizetype i = 0; i <= explanation.size(); ++i) {
        if (i < explanation.size() && isNameCharacter(explanation[i])) {
            begin = begin < 0 ? i : begin;
        } else if (begin >= 0) {
            const auto parts = partsOf(explanation.sliced(begin, i - begin));
            if (parts.size() > 1) {
                return {parts.last()};
            }
            owners.append(parts);
            begin = -1;
        }
    }
    return owners.size() > MostOwners ? owners.last(MostOwners) : owners;
}

std::string initialsOf(QStringView head)
{
    QString initials;
    bool isBegin = true;
    for (const QChar c : head) {
        if (c.isLetterOrNumber() && isBegin) {
            initials += c;
        }
        isBegin = !c.isLetterOrNumber();
    }
    return initials.size() > 1 && initials.size() <= MostInitials ? squeezed(initials) : std::string();
}

/// Of the words, of them without the first one, which may be an article, and of what stands in brackets.
void addInitials(QStringView head, QStringView explanation, EntryName& name)
{
    const auto add = [&name](QStringView words) {
        if (auto initials = initialsOf(words); !initials.empty()) {
            name.initials.push_back(std::move(initials));
        }
    };
    add(head);
    if (const qsizetype second = head.indexOf(u' '); head.count(u' ') >= LeastAfterArticle) {
        add(head.sliced(second + 1));
    }
    if (const qsizetype close = explanation.indexOf(u')'); explanation.startsWith(u'(') && close > 0) {
        add(explanation.first(close));
    }
}

/// Signs at its ends belong to a name.
std::string literalOf(QStringView head)
{
    const auto isSign = [](QChar c) {
        return !c.isLetterOrNumber() && !c.isSpace() && c != u'_' && c != u'.' && c != u',' && c != u')' &&
               c != u'"' && c != u'\'' && c.unicode() < 0x80;
    };
    if (head.isEmpty() || head.size() > LongestLiteral || !(isSign(head.front()) || isSign(head.back()))) {
        return {};
    }
    return head.toString().remove(u' ').toLower().toStdString();
}

/// Whether a name of one word, and which part of it, tells what it belongs to.
void readParts(QStringView head, QStringView explanation, EntryName& name)
{
    const auto parts = partsOf(head);
    name.parts = std::max<int>(1, int(parts.size()));
    name.last = parts.size() > 1 ? squeezed(parts.last()) : name.head;
    const auto owners =
        parts.size() > 1 ? QList<QStringView>{parts[parts.size() - 2]} : ownersIn(explanation);
    for (const auto owner : owners) {
        name.owners.push_back(squeezed(owner));
    }
}

} // namespace

std::string squeezed(QStringView text)
{
    std::string folded;
    for (const char32_t c : text.toUcs4()) {
        if (QChar::isLetterOrNumber(c) || QChar::isMark(c)) {
            if (!foldMark(folded, c)) {
                appendFolded(folded, c);
            }
        }
    }
    return folded;
}

EntryName readEntryName(QStringView text)
{
    const QString bare = withoutArguments(halfWidth(text.first(std::min(text.size(), LongestText))));
    const auto whole = withoutNumber(QStringView(bare).trimmed());
    const qsizetype end = headEnd(whole);
    const auto head = whole.first(end).trimmed();
    EntryName name;
    name.whole = squeezed(whole);
    name.head = squeezed(head);
    name.last = name.head;
    name.literal = literalOf(head);
    if (head.contains(u' ') || head.contains(u'-')) {
        addInitials(head, whole.sliced(end), name);
    }
    if (!head.contains(u' ')) {
        auto explanation = whole.sliced(end);
        // Not the arguments.
        const qsizetype close = explanation.startsWith(u'(') ? explanation.indexOf(u')') : -1;
        const bool isArguments = close >= 0 && close + 1 < explanation.size();
        const auto said = isArguments ? explanation.sliced(close + 1) : explanation;
        // What follows a comma is about the name.
        readParts(head, said.startsWith(u',') && !said.contains(u'(') ? QStringView() : said, name);
    }
    return name;
}

bool saysOwner(std::string_view anchor, std::string_view member)
{
    return squeezed(QString::fromUtf8(anchor.data(), qsizetype(anchor.size()))).ends_with(member);
}
