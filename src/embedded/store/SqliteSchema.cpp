// SPDX-License-Identifier: Apache-2.0
#include "embedded/store/SqliteSchema.h"

namespace qor::embedded {

namespace {

constexpr StoredTableLayout kLayouts[] = {
    {"libraries", 1, {{{"id"}}}, {"name"}},
    {"parts", 1, {{{"id"}, {"library"}, {"part"}}}, {"name"}},
    {"classes", 1, {{{"id"}, {"part"}, {"superclass", true}, {"is_abstract"}, {"is_record"}}}, {"name"}},
    {"relation_classes", 1, {{{"id"}, {"part"}, {"source"}, {"target"}}}, {"name"}},
    {"attributes",
     1,
     {{{"id"}, {"owner"}, {"type"}, {"level"}, {"refers_to_models"}, {"target", true}, {"shown_as", true}}},
     {"name", "default_text"}},
    {"enumeration_values", 2, {{{"attribute"}, {"position"}}}, {"text"}},
    {"model_types", 1, {{{"id"}, {"part"}}}, {"name"}},
    {"visible_classes", 2, {{{"model_type"}, {"class"}}}, {}},
    {"model_groups", 1, {{{"id"}, {"library"}, {"parent", true}}}, {"name"}},
    {"threads", 1, {{{"id"}, {"model_type"}, {"model_group", true}}}, {"name"}},
    {"models", 1, {{{"id"}, {"thread"}}}, {"version"}},
    {"objects", 1, {{{"id"}, {"class"}, {"model"}}}, {"name"}},
    {"relations", 1, {{{"id"}, {"class"}, {"source"}, {"target"}}}, {}},
    {"record_rows", 1, {{{"id"}, {"class"}, {"owner"}, {"attribute"}, {"position"}}}, {}},
    {"attribute_values", 2, {{{"thing"}, {"attribute"}}}, {"text"}},
    {"user_groups", 1, {{{"id"}, {"is_system"}}}, {"name"}},
    {"users",
     1,
     {{{"id"}, {"name_kind"}, {"managers"}, {"is_administrator"}, {"is_sub_administrator"}, {"library", true}}},
     {"logon_name", "display_name", "second_name"}},
    {"memberships", 2, {{{"member"}, {"user_group"}}}, {}},
    {"permissions", 2, {{{"user_group"}, {"model_group"}, {"permission"}}}, {}},
    {"profile_entries", 2, {{{"user"}, {"entry"}}}, {"text"}},
    {"user_settings", 1, {{{"setting"}, {"value"}}}, {}},
};
static_assert(std::size(kLayouts) == kStoredTables);

// Foreign keys stand where tables are small. Between objects, relations and values they would need an index on every
// reference, which doubles the file; there, the hashes and the check on opening tell what refers to nothing.
constexpr const char* kFirstVersion = R"sql(
CREATE TABLE repository (
    id INTEGER PRIMARY KEY CHECK (id = 1),
    hash_key BLOB NOT NULL,
    next_identifier INTEGER NOT NULL,
    generation INTEGER NOT NULL,
    hash INTEGER NOT NULL
) STRICT;
CREATE TABLE sums (
    scope INTEGER PRIMARY KEY,
    row_count INTEGER NOT NULL,
    total INTEGER NOT NULL,
    hash INTEGER NOT NULL
) STRICT;
CREATE TABLE libraries (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL,
    hash INTEGER NOT NULL
) STRICT;
CREATE TABLE parts (
    id INTEGER PRIMARY KEY,
    library INTEGER NOT NULL REFERENCES libraries DEFERRABLE INITIALLY DEFERRED,
    part INTEGER NOT NULL,
    name TEXT NOT NULL,
    hash INTEGER NOT NULL
) STRICT;
CREATE TABLE classes (
    id INTEGER PRIMARY KEY,
    part INTEGER NOT NULL REFERENCES parts DEFERRABLE INITIALLY DEFERRED,
    superclass INTEGER REFERENCES classes DEFERRABLE INITIALLY DEFERRED,
    is_abstract INTEGER NOT NULL,
    is_record INTEGER NOT NULL,
    name TEXT NOT NULL,
    hash INTEGER NOT NULL
) STRICT;
CREATE INDEX classes_of_part ON classes (part);
CREATE INDEX subclasses ON classes (superclass);
CREATE TABLE relation_classes (
    id INTEGER PRIMARY KEY,
    part INTEGER NOT NULL REFERENCES parts DEFERRABLE INITIALLY DEFERRED,
    source INTEGER NOT NULL REFERENCES classes DEFERRABLE INITIALLY DEFERRED,
    target INTEGER NOT NULL REFERENCES classes DEFERRABLE INITIALLY DEFERRED,
    name TEXT NOT NULL,
    hash INTEGER NOT NULL
) STRICT;
CREATE INDEX relation_classes_of_part ON relation_classes (part);
CREATE INDEX relation_classes_from ON relation_classes (source);
CREATE INDEX relation_classes_to ON relation_classes (target);
CREATE TABLE attributes (
    id INTEGER PRIMARY KEY,
    owner INTEGER NOT NULL,
    type INTEGER NOT NULL,
    level INTEGER NOT NULL,
    refers_to_models INTEGER NOT NULL,
    target INTEGER REFERENCES classes DEFERRABLE INITIALLY DEFERRED,
    shown_as INTEGER,
    name TEXT NOT NULL,
    default_text TEXT NOT NULL,
    hash INTEGER NOT NULL
) STRICT;
CREATE INDEX attributes_to ON attributes (target);
CREATE TABLE enumeration_values (
    attribute INTEGER NOT NULL REFERENCES attributes DEFERRABLE INITIALLY DEFERRED,
    position INTEGER NOT NULL,
    text TEXT NOT NULL,
    hash INTEGER NOT NULL,
    PRIMARY KEY (attribute, position)
) STRICT, WITHOUT ROWID;
CREATE TABLE model_types (
    id INTEGER PRIMARY KEY,
    part INTEGER NOT NULL REFERENCES parts DEFERRABLE INITIALLY DEFERRED,
    name TEXT NOT NULL,
    hash INTEGER NOT NULL
) STRICT;
CREATE INDEX model_types_of_part ON model_types (part);
CREATE TABLE visible_classes (
    model_type INTEGER NOT NULL REFERENCES model_types DEFERRABLE INITIALLY DEFERRED,
    class INTEGER NOT NULL REFERENCES classes DEFERRABLE INITIALLY DEFERRED,
    hash INTEGER NOT NULL,
    PRIMARY KEY (model_type, class)
) STRICT, WITHOUT ROWID;
CREATE INDEX visible_classes_by_class ON visible_classes (class);
CREATE TABLE model_groups (
    id INTEGER PRIMARY KEY,
    library INTEGER NOT NULL REFERENCES libraries DEFERRABLE INITIALLY DEFERRED,
    parent INTEGER REFERENCES model_groups DEFERRABLE INITIALLY DEFERRED,
    name TEXT NOT NULL,
    hash INTEGER NOT NULL
) STRICT;
CREATE INDEX model_groups_of_library ON model_groups (library);
CREATE INDEX model_groups_in_group ON model_groups (parent);
CREATE TABLE threads (
    id INTEGER PRIMARY KEY,
    model_type INTEGER NOT NULL REFERENCES model_types DEFERRABLE INITIALLY DEFERRED,
    model_group INTEGER REFERENCES model_groups DEFERRABLE INITIALLY DEFERRED,
    name TEXT NOT NULL,
    hash INTEGER NOT NULL
) STRICT;
CREATE INDEX threads_of_model_type ON threads (model_type);
CREATE INDEX threads_in_group ON threads (model_group);
CREATE TABLE models (
    id INTEGER PRIMARY KEY,
    thread INTEGER NOT NULL REFERENCES threads DEFERRABLE INITIALLY DEFERRED,
    version TEXT NOT NULL,
    hash INTEGER NOT NULL
) STRICT;
CREATE INDEX models_of_thread ON models (thread);
CREATE TABLE objects (
    id INTEGER PRIMARY KEY,
    class INTEGER NOT NULL,
    model INTEGER NOT NULL,
    name TEXT NOT NULL,
    hash INTEGER NOT NULL
) STRICT;
CREATE TABLE relations (
    id INTEGER PRIMARY KEY,
    class INTEGER NOT NULL,
    source INTEGER NOT NULL,
    target INTEGER NOT NULL,
    hash INTEGER NOT NULL
) STRICT;
CREATE TABLE record_rows (
    id INTEGER PRIMARY KEY,
    class INTEGER NOT NULL,
    owner INTEGER NOT NULL,
    attribute INTEGER NOT NULL,
    position INTEGER NOT NULL,
    hash INTEGER NOT NULL
) STRICT;
CREATE TABLE attribute_values (
    thing INTEGER NOT NULL,
    attribute INTEGER NOT NULL,
    text TEXT NOT NULL,
    hash INTEGER NOT NULL,
    PRIMARY KEY (thing, attribute)
) STRICT, WITHOUT ROWID;
)sql";

// Identifiers of locks are not used twice: a holder knows by them that its lock was broken.
constexpr const char* kWithLocks = R"sql(
CREATE TABLE locks (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    library INTEGER NOT NULL,
    is_exclusive INTEGER NOT NULL,
    user TEXT NOT NULL,
    process INTEGER NOT NULL,
    host TEXT NOT NULL,
    since TEXT NOT NULL
) STRICT;
CREATE TABLE lock_breaks (
    library INTEGER PRIMARY KEY,
    breaks INTEGER NOT NULL
) STRICT;
)sql";

// Not among the layouts: the file area is read and written directly, and its chain tells what was done to it.
constexpr const char* kFileArea = R"sql(
CREATE TABLE file_area (
    id INTEGER PRIMARY KEY CHECK (id = 1),
    identity BLOB NOT NULL,
    sequence INTEGER NOT NULL,
    chain BLOB NOT NULL,
    seal_key BLOB NOT NULL,
    lost_writes INTEGER NOT NULL,
    key_check BLOB NOT NULL,
    mac BLOB NOT NULL
) STRICT;
INSERT INTO file_area VALUES (1, randomblob(16), 0, x'', x'', 0, x'', x'');
CREATE TABLE files (
    id INTEGER PRIMARY KEY,
    begins INTEGER NOT NULL,
    name TEXT NOT NULL UNIQUE
) STRICT;
CREATE TABLE file_entries (
    sequence INTEGER PRIMARY KEY,
    file INTEGER NOT NULL,
    kind INTEGER NOT NULL,
    content BLOB,
    content_hash BLOB NOT NULL,
    chain BLOB NOT NULL,
    seal BLOB NOT NULL
) STRICT;
CREATE INDEX entries_of_file ON file_entries (file);
)sql";

constexpr const char* kUsers = R"sql(
CREATE TABLE user_groups (
    id INTEGER PRIMARY KEY,
    is_system INTEGER NOT NULL,
    name TEXT NOT NULL,
    hash INTEGER NOT NULL
) STRICT;
CREATE TABLE users (
    id INTEGER PRIMARY KEY,
    name_kind INTEGER NOT NULL,
    managers INTEGER NOT NULL,
    is_administrator INTEGER NOT NULL,
    is_sub_administrator INTEGER NOT NULL,
    library INTEGER REFERENCES libraries DEFERRABLE INITIALLY DEFERRED,
    logon_name TEXT NOT NULL,
    display_name TEXT NOT NULL,
    second_name TEXT NOT NULL,
    hash INTEGER NOT NULL
) STRICT;
CREATE INDEX users_of_library ON users (library);
CREATE TABLE memberships (
    member INTEGER NOT NULL,
    user_group INTEGER NOT NULL REFERENCES user_groups DEFERRABLE INITIALLY DEFERRED,
    hash INTEGER NOT NULL,
    PRIMARY KEY (member, user_group)
) STRICT, WITHOUT ROWID;
CREATE INDEX members ON memberships (user_group);
CREATE TABLE permissions (
    user_group INTEGER NOT NULL REFERENCES user_groups DEFERRABLE INITIALLY DEFERRED,
    model_group INTEGER NOT NULL REFERENCES model_groups DEFERRABLE INITIALLY DEFERRED,
    permission INTEGER NOT NULL,
    hash INTEGER NOT NULL,
    PRIMARY KEY (user_group, model_group)
) STRICT, WITHOUT ROWID;
CREATE INDEX permissions_on_model_group ON permissions (model_group);
CREATE TABLE profile_entries (
    user INTEGER NOT NULL REFERENCES users DEFERRABLE INITIALLY DEFERRED,
    entry INTEGER NOT NULL,
    text TEXT NOT NULL,
    hash INTEGER NOT NULL,
    PRIMARY KEY (user, entry)
) STRICT, WITHOUT ROWID;
CREATE TABLE user_settings (
    setting INTEGER PRIMARY KEY,
    value INTEGER NOT NULL,
    hash INTEGER NOT NULL
) STRICT;
)sql";

constexpr const char* kMigrations[] = {kFirstVersion, kWithLocks, kFileArea, kUsers};

std::string columns(const StoredTableLayout& table) {
    std::string list;
    for (std::size_t at = 0; at < table.numberCount(); ++at) list += std::string(table.numbers[at].name) + ", ";
    for (std::size_t at = 0; at < table.textCount(); ++at) list += std::string(table.texts[at]) + ", ";
    return list + "hash";
}

std::string keys(const StoredTableLayout& table, const char* separator, const char* after) {
    std::string list;
    for (std::size_t at = 0; at < table.keys; ++at)
        list += std::string(at == 0 ? "" : separator) + table.numbers[at].name + after;
    return list;
}

}  // namespace

const StoredTableLayout& layoutOf(StoredTable table) { return kLayouts[static_cast<std::size_t>(table)]; }

std::string sqlFor(const StoredTableLayout& table, RowStatement statement) {
    const std::string name = table.name;
    const std::string where = " WHERE " + keys(table, " AND ", " = ?");
    std::string places = "?";
    for (std::size_t at = 0; at < table.numberCount() + table.textCount(); ++at) places += ", ?";
    switch (statement) {
        case RowStatement::Select:
            return "SELECT " + columns(table) + " FROM " + name + " ORDER BY " + keys(table, ", ", "");
        case RowStatement::Insert:
            return "INSERT INTO " + name + " (" + columns(table) + ") VALUES (" + places + ")";
        case RowStatement::Replace:
            return "REPLACE INTO " + name + " (" + columns(table) + ") VALUES (" + places + ")";
        case RowStatement::Hash:
            return "SELECT hash FROM " + name + where;
        case RowStatement::Remove:
            return "DELETE FROM " + name + where;
    }
    return {};
}

SqliteMigrations repositoryMigrations() { return kMigrations; }

const char* fileAreaTables() { return kFileArea; }

}  // namespace qor::embedded
