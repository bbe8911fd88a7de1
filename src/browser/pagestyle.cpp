// SPDX-License-Identifier: MIT
#include "browser/pagestyle.h"

#include <algorithm>
#include <vector>

namespace {

/// Sizes and distances of the reading view, which do not depend on the palette. Headings get their size from
/// one rule only: within an element that two rules give a size, rich text shows what is marked in the first.
const QString ReadingLayout = QStringLiteral(
    "p,li,dd,div{line-height:120%}"
    "h1{margin-top:0;margin-bottom:12px}h2{margin-top:24px;margin-bottom:8px}"
    "h3{margin-top:20px;margin-bottom:6px}h4,h5,h6{margin-top:14px;margin-bottom:4px}"
    ".largest{font-size:xx-large}.larger{font-size:x-large}.large{font-size:large}.usual{font-size:medium}"
    "p{margin-top:0;margin-bottom:10px}p.last{margin-bottom:0}p.item{margin-bottom:4px}p.picture,div.picture{"
    "line-height:100%}"
    "p.title{font-weight:bold;margin-top:8px;margin-bottom:4px}p.caption{margin-bottom:6px}"
    "p.note,p.tip,p.warning,p.danger,p.quote{margin-bottom:4px}"
    "ul,ol{margin-top:0;margin-bottom:8px}li{margin-bottom:3px}"
    "dt{font-weight:bold;margin-top:6px;margin-bottom:2px}dt.sig{font-weight:normal;margin-top:12px}"
    "dd{margin-bottom:6px}div.term{margin-top:6px;margin-bottom:2px}"
    "pre{white-space:pre-wrap;line-height:100%;margin-top:0;margin-bottom:0}td.code{padding:8px}"
    "table{margin-top:4px;margin-bottom:8px}table.beside{margin-top:0;margin-bottom:0}"
    "td.note,td.tip,td.warning,td.danger{padding:8px;padding-left:12px}td.quote{padding-left:12px}"
    "table.data{border-collapse:collapse;border-style:solid}th{text-align:left}"
    "kbd{font-weight:bold}div.figure{line-height:100%;margin-top:4px;margin-bottom:12px}span.alt{font-style:"
    "italic}");

QColor mixed(const QColor& a, const QColor& b, float share)
{
    const auto mix = [share](float x, float y) { return x + (y - x) * share; };
    return QColor::fromRgbF(mix(a.redF(), b.redF()), mix(a.greenF(), b.greenF()), mix(a.blueF(), b.blueF()));
}

Rgb toRgb(const QColor& color)
{
    return color.rgb() & RGB_MASK;
}

QString quoted(QString text)
{
    return u'"' + text.replace(u'\\', QStringLiteral("\\\\")).replace(u'"', QStringLiteral("\\\"")) + u'"';
}

} // namespace

double contrast(const QColor& a, const QColor& b)
{
    return contrast(toRgb(a), toRgb(b));
}

QColor readableOn(const QColor& color, const QColor& ground)
{
    return QColor::fromRgb(readableOn(toRgb(color), toRgb(ground)));
}

namespace {

/// What the reading view paints with on a palette.
struct ReadingColors {
    struct Note {
        const char* name;
        QColor bar;
        QColor ground;
        QColor title;
    };

    explicit ReadingColors(const QPalette& palette)
        : base(palette.color(QPalette::Active, QPalette::Base)),
          tint(mixed(base, palette.color(QPalette::Active, QPalette::Text), 0.06F)),
          line(mixed(base, palette.color(QPalette::Active, QPalette::Text), 0.2F)),
          muted(readableOn(mixed(base, palette.color(QPalette::Active, QPalette::Text), 0.6F), tint)),
          keyword(readableOn(QColor(0x7a, 0x3e, 0x9d), tint)),
          string(readableOn(QColor(0x2e, 0x7d, 0x32), tint)), notes{makeNote("note", {0x2f, 0x6f, 0xde}),
                                                                    makeNote("tip", {0x2e, 0x9e, 0x4f}),
                                                                    makeNote("warning", {0xd0, 0x8a, 0x00}),
                                                                    makeNote("danger", {0xd0, 0x34, 0x2c})}
    {
    }

    [[nodiscard]] std::vector<QColor> grounds() const
    {
        std::vector<QColor> all{base, tint};
        for (const auto& note : notes) {
            all.push_back(note.ground);
        }
        return all;
    }

    QColor base;
    QColor tint; ///< under code and the heads of tables
    QColor line;
    QColor muted;
    QColor keyword;
    QColor string;
    std::vector<Note> notes;

private:
    [[nodiscard]] Note makeNote(const char* name, const QColor& hue) const
    {
        const QColor ground = mixed(base, hue, 0.1F);
        return {name, hue, ground, readableOn(hue, ground)};
    }
};

} // namespace

QColor PageStyle::shownLinkColor(const QPalette& palette) const
{
    const QColor link = palette.color(QPalette::Active, QPalette::Link);
    return hasOwnLinkColor ? link : readableOn(link, palette.color(QPalette::Active, QPalette::Base));
}

QString PageStyle::readingSheet(const QPalette& palette) const
{
    const ReadingColors colors(palette);
    QColor link = palette.color(QPalette::Active, QPalette::Link);
    if (!hasOwnLinkColor) {
        for (const auto& ground : colors.grounds()) {
            link = readableOn(link, ground);
        }
    }
    QString sheet =
        QStringLiteral("a:link{color:%1;text-decoration:%2}"
                       "pre,code,tt,kbd,samp,dt.sig{font-family:%3}")
            .arg(link.name(), linkUnderline ? QStringLiteral("underline") : QStringLiteral("none"),
                 quoted(fixedFamily));
    if (!isUnderlineChosen) {
        sheet += QStringLiteral("a.plain:link{text-decoration:none}");
    }
    sheet += ReadingLayout;
    sheet += QStringLiteral("code,kbd,td.code,dt.sig,th{background-color:%1}"
                            "table.data{border-color:%2}td.quote{border-left:3px solid %2}"
                            "p.caption,span.alt,span.comment,h6{color:%3}"
                            "span.keyword{color:%4}span.string{color:%5}")
                 .arg(colors.tint.name(), colors.line.name(), colors.muted.name(), colors.keyword.name(),
                      colors.string.name());
    for (const auto& note : colors.notes) {
        sheet +=
            QStringLiteral("td.%1{background-color:%2;border-left:4px solid %3}p.%1{color:%4}")
                .arg(QLatin1StringView(note.name), note.ground.name(), note.bar.name(), note.title.name());
    }
    return sheet;
}

QString PageStyle::sheet(const QPalette& palette) const
{
    return QStringLiteral("a:link{color:%1;text-decoration:%2}pre,code,tt,kbd,samp{font-family:%3}")
        .arg(shownLinkColor(palette).name(),
             linkUnderline ? QStringLiteral("underline") : QStringLiteral("none"), quoted(fixedFamily));
}
