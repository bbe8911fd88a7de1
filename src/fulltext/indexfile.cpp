// SPDX-License-Identifier: MIT
#include "fulltext/indexfile.h"

#include <sqlite3.h>

#include <string_view>

namespace {

constexpr int64_t ApplicationId = 0x51534458; // "QSDX"
constexpr int64_t Format = 5;

// What is to be settled before there are tables. Later, these need the right to write, for which one may wait
// long.
constexpr const char* Schema = R"(
PRAGMA page_size = 8192;
PRAGMA auto_vacuum = INCREMENTAL;
PRAGMA journal_mode = WAL;
BEGIN IMMEDIATE;
CREATE TABLE IF NOT EXISTS pages(id INTEGER PRIMARY KEY AUTOINCREMENT, path TEXT NOT NULL, size INTEGER NOT NULL,
    time INTEGER NOT NULL, names INTEGER NOT NULL, hash INTEGER NOT NULL, words INTEGER NOT NULL,
    titlewords INTEGER NOT NULL, headingwords INTEGER NOT NULL, keywordwords INTEGER NOT NULL,
    language TEXT NOT NULL, links INTEGER NOT NULL, title TEXT NOT NULL, targets TEXT NOT NULL);
CREATE TABLE IF NOT EXISTS names(key INTEGER NOT NULL, page INTEGER NOT NULL, anchor TEXT NOT NULL,
    kind INTEGER NOT NULL, PRIMARY KEY(key, page, anchor)) WITHOUT ROWID;
CREATE VIRTUAL TABLE IF NOT EXISTS words USING fts5(body, title, keywords, headings, content='', columnsize=0,
    tokenize='prepared');
CREATE VIRTUAL TABLE IF NOT EXISTS vocabulary USING fts5vocab(words, 'row');
INSERT INTO words(words, rank) VALUES('automerge', 0), ('crisismerge', 256), ('hashsize', 4000000);
PRAGMA application_id = 1364411480;
PRAGMA user_version = 5;
COMMIT;
)";

// The words come cut and folded; all that is left to do is to tell them apart.
int createTokenizer(void* /*context*/, const char** /*arguments*/, int /*count*/, Fts5Tokenizer** tokenizer)
{
    static char none = 0;
    *tokenizer = reinterpret_cast<Fts5Tokenizer*>(&none);
    return SQLITE_OK;
}

void deleteTokenizer(Fts5Tokenizer* /*tokenizer*/)
{
}

using UseToken = int (*)(void* context, int flags, const char* token, int size, int begin, int end);

int tokenize(Fts5Tokenizer* /*tokenizer*/, void* context, int /*flags*/, const char* text, int size,
             UseToken use)
{
    const std::string_view all(text, size_t(size));
    for (size_t at = 0; at < all.size();) {
        const bool isSame = all[at] == IndexFile::SamePosition;
        const size_t begin = isSame || all[at] == ' ' ? at + 1 : at;
        size_t end = begin;
        while (end < all.size() && all[end] != ' ' && all[end] != IndexFile::SamePosition) {
            ++end;
        }
        if (end > begin) {
            const int result = use(context, isSame ? FTS5_TOKEN_COLOCATED : 0, text + begin, int(end - begin),
                                   int(begin), int(end));
            if (result != SQLITE_OK) {
                return result;
            }
        }
        at = end;
    }
    return SQLITE_OK;
}

bool registerTokenizer(Database& database)
{
    auto* api = IndexFile::fts5Api(database);
    fts5_tokenizer tokenizer{createTokenizer, deleteTokenizer, tokenize};
    return api != nullptr &&
           api->xCreateTokenizer(api, "prepared", nullptr, &tokenizer, nullptr) == SQLITE_OK;
}

} // namespace

fts5_api* IndexFile::fts5Api(Database& database)
{
    fts5_api* api = nullptr;
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(database.handle(), "SELECT fts5(?1)", -1, &statement, nullptr) == SQLITE_OK) {
        sqlite3_bind_pointer(statement, 1, static_cast<void*>(&api), "fts5_api_ptr", nullptr);
        sqlite3_step(statement);
    }
    sqlite3_finalize(statement);
    return api;
}

std::unique_ptr<Database> IndexFile::open(const QByteArray& name)
{
    auto database = std::make_unique<Database>(name);
    if (!database->run("PRAGMA secure_delete = OFF; PRAGMA synchronous = NORMAL; PRAGMA cache_size = -16000; "
                       "PRAGMA temp_store = MEMORY") ||
        !registerTokenizer(*database)) {
        return nullptr;
    }
    const bool isNew = database->number("PRAGMA application_id") == 0 &&
                       database->number("SELECT count(*) FROM sqlite_schema") == 0;
    if (isNew && !database->run(Schema) && database->number("PRAGMA application_id") != ApplicationId) {
        return nullptr;
    }
    const bool isOurs = database->number("PRAGMA application_id") == ApplicationId &&
                        database->number("PRAGMA user_version") == Format &&
                        database->number("SELECT count(*) FROM sqlite_schema WHERE name IN "
                                         "('pages', 'names', 'words', 'vocabulary')") == 4;
    return isOurs ? std::move(database) : nullptr;
}

bool IndexFile::isSound(Database& database)
{
    return database.run("INSERT INTO words(words, rank) VALUES('integrity-check', 0)") ||
           !database.isDamaged();
}

bool IndexFile::clear(Database& database)
{
    return database.run("BEGIN IMMEDIATE; DELETE FROM pages; DELETE FROM names; "
                        "INSERT INTO words(words) VALUES('delete-all'); "
                        "DELETE FROM sqlite_sequence; COMMIT");
}

void IndexFile::appendPrepared(std::string& prepared, const Words& words)
{
    uint32_t last = UINT32_MAX;
    for (const auto& word : words.all()) {
        prepared += word.position == last ? SamePosition : ' ';
        prepared += words.folded(word);
        last = word.position;
    }
}

int64_t IndexFile::keyOf(std::string_view name)
{
    constexpr uint64_t stored = 0xFFFFFFFFFF; // takes three bytes less than all of the hash
    return static_cast<int64_t>(uint64_t(hashOf(name)) & stored);
}

int64_t IndexFile::hashOf(std::string_view text, uint64_t seed)
{
    // FNV-1a
    uint64_t hash = 0xcbf29ce484222325U ^ seed;
    for (const char c : text) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3U;
    }
    return static_cast<int64_t>(hash);
}
