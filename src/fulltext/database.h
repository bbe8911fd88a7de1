// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <memory>
#include <stop_token>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

/// A statement of a database, ready to be run many times. Numbers of parameters count from 1, those of
/// columns from 0.
class Statement {
public:
    /// `sawDamage` becomes true when the database turns out to be damaged.
    Statement(sqlite3* database, const char* sql, bool& sawDamage);

    /// The text must outlive the next step; UTF-8.
    Statement& bind(int parameter, std::string_view text);
    Statement& bind(int parameter, int64_t number);
    /// True while there is a row; false at the end and on errors, see ok().
    bool step();
    /// Runs a statement without rows; false on errors.
    bool run();
    /// Lets the statement be run anew.
    void reset();
    [[nodiscard]] bool ok() const { return m_ok; }

    [[nodiscard]] int64_t number(int column) const;
    /// Valid until the next step.
    [[nodiscard]] std::string_view text(int column) const;

private:
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const;
    };
    std::unique_ptr<sqlite3_stmt, Finalize> m_statement;
    bool* m_sawDamage;
    bool m_ok = true;
};

/// A connection to an SQLite database. For one thread at a time.
class Database {
public:
    /// Opens, and makes if need be, the database of a file, or of a "file:" name of the library's.
    explicit Database(const QByteArray& name);
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;
    ~Database() = default;

    [[nodiscard]] bool isOpen() const { return m_handle != nullptr; }
    [[nodiscard]] sqlite3* handle() const { return m_handle.get(); }
    /// Several statements; false when one fails, which ends them.
    bool run(const char* sql) const;
    /// Of a statement that gives one; -1 on errors.
    [[nodiscard]] int64_t number(const char* sql);
    /// Number of the row added last.
    [[nodiscard]] int64_t lastId() const;
    [[nodiscard]] Statement prepare(const char* sql) { return {handle(), sql, m_sawDamage}; }
    /// Lets statements fail as soon as a stop is asked for.
    void setStop(const std::stop_token& stop);
    /// What went wrong last, for people.
    [[nodiscard]] QString error() const;
    /// Whether what went wrong last says that the file is no usable database, as opposed to a lack of room.
    [[nodiscard]] bool isDamaged() const;
    /// Whether a statement came upon damage while it was read.
    [[nodiscard]] bool sawDamage() const { return m_sawDamage; }
    /// For what makes no sense though it can be read.
    void noteDamage() { m_sawDamage = true; }

private:
    struct Close {
        void operator()(sqlite3* handle) const;
    };
    std::unique_ptr<sqlite3, Close> m_handle;
    std::stop_token m_stop;
    bool m_sawDamage = false;
};
