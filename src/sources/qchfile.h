// SPDX-License-Identifier: MIT
#pragma once

#include "sources/package.h"

#include <QCoreApplication>
#include <QHash>

#include <functional>
#include <memory>

struct sqlite3;
struct sqlite3_stmt;

/// A Qt help file: an SQLite database that is only read, and trusted in nothing: it may neither run code of
/// its own nor work for long.
class QchFile : public Package {
    Q_DECLARE_TR_FUNCTIONS(QchFile)

public:
    static constexpr qint64 LargestFile = 64'000'000; ///< bytes of a page or of the contents, not packed
    static constexpr int MaximumRows = 1'000'000;     ///< of a table

    explicit QchFile(const QString& path);
    ~QchFile() override;

    /// What is wrong with it, for people; null while nothing is.
    [[nodiscard]] const QString& problem() const { return m_problem; }
    /// The folder that its pages say they are in.
    [[nodiscard]] QString folder();
    [[nodiscard]] QString version();

    /// How many of its files are pages.
    [[nodiscard]] int pageCount();

    struct Keyword {
        QString name;
        QString page; ///< in the folder, with its anchor
    };
    /// Nothing more is given once `use` returns false.
    void keywords(const std::function<bool(const Keyword&)>& use);
    /// One after the other, as they stand in the file.
    [[nodiscard]] QByteArray contents();

    /// The path of a page, named by its folder, "/" and its name in there, in a file of this directory that
    /// has the folder, whether the page is in it or not; null when there is none.
    [[nodiscard]] static QString findPage(const QString& directory, const QString& name);

    [[nodiscard]] std::optional<qint64> packedSize(const QString& name) override;
    [[nodiscard]] Result<QByteArray, FileError> read(const QString& name, qint64 most) override;
    [[nodiscard]] QString elsewhere(const QString& name) override;

private:
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const;
    };
    using Statement = std::unique_ptr<sqlite3_stmt, Finalize>;
    struct Close {
        void operator()(sqlite3* handle) const;
    };
    struct Entry {
        qint64 id = 0;
        qint64 size = 0;
    };

    void open();
    [[nodiscard]] Statement prepare(const char* sql);
    /// False at the end; when that is an error or comes late, there is a problem afterwards.
    bool step(const Statement& statement);
    [[nodiscard]] QString text(const Statement& statement, int column);
    [[nodiscard]] QString firstText(const char* sql);
    const QHash<QString, Entry>& files();

    QString m_path;
    QString m_problem;
    qint64 m_steps = 0; ///< of the database's machine, in thousands
    int m_rows = 0;
    qint64 m_textGiven = 0; ///< bytes, in these rows
    std::unique_ptr<sqlite3, Close> m_handle;
    std::optional<QHash<QString, Entry>> m_files; ///< by their names in the package
};
