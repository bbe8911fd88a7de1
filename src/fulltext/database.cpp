// SPDX-License-Identifier: MIT
#include "fulltext/database.h"

#include <sqlite3.h>

namespace {

constexpr int BusyTime = 3000;    // milliseconds to wait for another process
constexpr int StepsPerLook = 200; // of the database's machine, between two looks for a stop

/// Says that what is stored makes no sense, as opposed to a lack of room or time.
bool isDamage(int result)
{
    const int code = result & 0xFF;
    return code == SQLITE_CORRUPT || code == SQLITE_NOTADB || code == SQLITE_FORMAT;
}

} // namespace

Statement::Statement(sqlite3* database, const char* sql, bool& sawDamage) : m_sawDamage(&sawDamage)
{
    sqlite3_stmt* statement = nullptr;
    const int result = sqlite3_prepare_v2(database, sql, -1, &statement, nullptr);
    m_ok = result == SQLITE_OK;
    *m_sawDamage = *m_sawDamage || isDamage(result);
    m_statement.reset(statement);
}

void Statement::Finalize::operator()(sqlite3_stmt* statement) const
{
    sqlite3_finalize(statement);
}

Statement& Statement::bind(int parameter, std::string_view text)
{
    sqlite3_bind_text(m_statement.get(), parameter, text.empty() ? "" : text.data(), int(text.size()),
                      SQLITE_STATIC);
    return *this;
}

Statement& Statement::bind(int parameter, int64_t number)
{
    sqlite3_bind_int64(m_statement.get(), parameter, number);
    return *this;
}

bool Statement::step()
{
    const int result = m_statement == nullptr ? SQLITE_ERROR : sqlite3_step(m_statement.get());
    m_ok = result == SQLITE_ROW || result == SQLITE_DONE;
    *m_sawDamage = *m_sawDamage || isDamage(result);
    return result == SQLITE_ROW;
}

bool Statement::run()
{
    while (step()) {
    }
    const bool done = m_ok;
    reset();
    return done;
}

void Statement::reset()
{
    sqlite3_reset(m_statement.get());
}

int64_t Statement::number(int column) const
{
    return sqlite3_column_int64(m_statement.get(), column);
}

std::string_view Statement::text(int column) const
{
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(m_statement.get(), column));
    return text == nullptr ? std::string_view()
                           : std::string_view(text, size_t(sqlite3_column_bytes(m_statement.get(), column)));
}

Database::Database(const QByteArray& name)
{
    sqlite3* handle = nullptr;
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX;
    const bool isOpen = sqlite3_open_v2(name.constData(), &handle, flags, nullptr) == SQLITE_OK;
    m_handle.reset(handle);
    if (!isOpen) {
        m_handle.reset();
        return;
    }
    sqlite3_busy_timeout(handle, BusyTime);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
}

void Database::Close::operator()(sqlite3* handle) const
{
    sqlite3_close_v2(handle);
}

bool Database::run(const char* sql) const
{
    return isOpen() && sqlite3_exec(handle(), sql, nullptr, nullptr, nullptr) == SQLITE_OK;
}

void Database::setStop(const std::stop_token& stop)
{
    m_stop = stop;
    const auto isStopped = [](void* token) {
        return static_cast<const std::stop_token*>(token)->stop_requested() ? 1 : 0;
    };
    sqlite3_progress_handler(handle(), StepsPerLook, stop.stop_possible() ? +isStopped : nullptr, &m_stop);
}

int64_t Database::number(const char* sql)
{
    auto statement = prepare(sql);
    return statement.step() ? statement.number(0) : -1;
}

int64_t Database::lastId() const
{
    return sqlite3_last_insert_rowid(handle());
}

QString Database::error() const
{
    return QString::fromUtf8(isOpen() ? sqlite3_errmsg(handle()) : sqlite3_errstr(SQLITE_CANTOPEN));
}

bool Database::isDamaged() const
{
    const int code = isOpen() ? sqlite3_errcode(handle()) : SQLITE_CANTOPEN;
    return m_sawDamage || isDamage(code) || code == SQLITE_ERROR || code == SQLITE_MISMATCH;
}
