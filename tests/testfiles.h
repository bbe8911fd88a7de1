// SPDX-License-Identifier: MIT
#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

/// Files of one test in a directory of their own.
class TemporaryFiles {
public:
    /// `text` holds files, each behind a line "== name"; without any such line it is the file a.cnt.
    explicit TemporaryFiles(const QByteArray& text)
    {
        const QString all =
            (text.startsWith("== ") ? QString() : QStringLiteral("== a.cnt\n")) + QString::fromUtf8(text);
        for (const auto& part : all.sliced(3).split(QStringLiteral("\n== "))) {
            write(part.section(u'\n', 0, 0), part.section(u'\n', 1).toUtf8());
        }
    }
    TemporaryFiles() = default;

    QString write(const QString& name, const QByteArray& bytes)
    {
        m_names += name;
        QFile file(path(name));
        QDir().mkpath(QFileInfo(file).path());
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
            qFatal("cannot write %s", qUtf8Printable(file.fileName()));
        }
        return file.fileName();
    }

    [[nodiscard]] QString path(const QString& name) const { return m_dir.path() + u'/' + name; }
    /// Names of the files in the order in which they were written.
    [[nodiscard]] QStringList names() const { return m_names; }
    /// The path of the first of them.
    [[nodiscard]] QString first() const { return path(m_names.constFirst()); }
    /// The text with "D" for the directory.
    [[nodiscard]] QString shortened(QString text) const
    {
        return text.replace(m_dir.path(), QStringLiteral("D"));
    }

private:
    QTemporaryDir m_dir;
    QStringList m_names;
};

/// The text of a file of the sources.
inline QString sourceText(const char* name)
{
    QFile file(qEnvironmentVariable("QUENDA_SOURCES") + u'/' + QString::fromUtf8(name));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// What the group of an expression matches in a text, in order.
inline QStringList matches(const QString& text, const QString& expression)
{
    QStringList found;
    const QRegularExpression pattern(expression, QRegularExpression::MultilineOption |
                                                     QRegularExpression::DotMatchesEverythingOption);
    for (const auto& match : pattern.globalMatch(text)) {
        found += match.captured(1);
    }
    return found;
}

/// Adds columns of QString.
template <typename... Names>
void addTexts(Names... names)
{
    (..., QTest::addColumn<QString>(names));
}

/// Adds a row of test data; literals are UTF-8 and become QString.
template <typename... Values>
void addRow(const char* name, const Values&... values)
{
    auto& row = QTest::newRow(name);
    const auto add = [&row](const auto& value) {
        if constexpr (std::is_array_v<std::remove_reference_t<decltype(value)>>) {
            row << QString::fromUtf8(value);
        } else {
            row << value;
        }
    };
    (..., add(values));
}
