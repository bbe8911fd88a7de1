// SPDX-License-Identifier: MIT
#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// Files of one test in a directory of their own.
class TemporaryFiles {
public:
    /// `text` holds files, each behind a line "== name".
    explicit TemporaryFiles(const QByteArray& text = {})
    {
        QString name;
        QByteArray bytes;
        for (const auto& line : text.split('\n')) {
            if (line.startsWith("== ")) {
                finish(name, bytes);
                name = QString::fromUtf8(line.sliced(3));
                bytes.clear();
            } else {
                bytes += line + '\n';
            }
        }
        finish(name, bytes);
    }

    QString write(const QString& name, const QByteArray& bytes)
    {
        const QString file = path(name);
        QDir().mkpath(QFileInfo(file).path());
        QFile out(file);
        if (!out.open(QIODevice::WriteOnly) || out.write(bytes) != bytes.size()) {
            qFatal("cannot write %s", qUtf8Printable(file));
        }
        return file;
    }

    [[nodiscard]] QString path(const QString& name) const { return m_dir.path() + u'/' + name; }
    /// Names of the files in the order in which they were described.
    [[nodiscard]] QStringList names() const { return m_names; }
    /// The path of the first of them.
    [[nodiscard]] QString first() const { return path(m_names.constFirst()); }
    /// The text with "D" for the directory.
    [[nodiscard]] QString shortened(QString text) const { return text.replace(m_dir.path(), QChar(u'D')); }

private:
    void finish(const QString& name, QByteArray bytes)
    {
        if (!name.isEmpty()) {
            bytes.chop(1);
            write(name, bytes);
            m_names.append(name);
        }
    }

    QTemporaryDir m_dir;
    QStringList m_names;
};

/// An expected text as a raw string holds it: without the line ends around it.
inline QString expectedText(const char* raw)
{
    return QString::fromUtf8(QByteArray(raw).trimmed());
}
