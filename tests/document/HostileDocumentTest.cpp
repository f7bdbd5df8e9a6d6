#include "tests/document/DocumentTest.h"

#include <sqlite3.h>

#include <random>

using namespace qor::document;
using namespace qor::document::testing;

namespace {

class HostileDocument : public DocumentTest {};

void change(const std::filesystem::path& file, const std::string& sql) {
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(file.c_str(), &database), SQLITE_OK);
    char* message = nullptr;
    sqlite3_exec(database, sql.c_str(), nullptr, nullptr, &message);
    EXPECT_EQ(message, nullptr) << message;
    sqlite3_close(database);
}

// A change of a sound file that SQLite allows, and what the reader must say to it; nothing: it is
// read all the same.
struct Tampering {
    const char* sql;
    const char* says;
};

constexpr auto tamperings = std::to_array<Tampering>({
    {"PRAGMA user_version = 2", "later version"},
    {"UPDATE document_info SET value = 2 WHERE key = 'tables_version'", "later version"},
    {"UPDATE product_info SET value = 2 WHERE key = 'tables_version'", "later version"},
    {"PRAGMA application_id = 7", "not a document of this program"},
    {"DROP TABLE scene_attribute", "scene_attribute is missing"},
    {"ALTER TABLE scene_object ADD COLUMN extra AS (abs(id))", "scene_object is missing or not"},
    {"UPDATE scene_object SET id = 77 WHERE id = 0", "out of order"},
    {"UPDATE scene_object SET material = 99 WHERE material IS NOT NULL", "material that is not"},
    {"UPDATE scene_object SET material = -3 WHERE material IS NOT NULL", "the reference -3"},
    {"UPDATE scene_attribute SET object = 4000 WHERE object = 0 OR "
     "object = (SELECT max(object) FROM scene_attribute)",
     "attribute of no object"},
    {"UPDATE scene_attribute SET type = 99", "unknown kind 99"},
    {"UPDATE scene_attribute SET a = 9e999 WHERE attribute = 'Intensity'", "is no number"},
    {"UPDATE scene_attribute SET position = position + 100", "out of order"},
    {"UPDATE scene_attribute SET a = 1, b = 500 WHERE type = 6", "reference to nothing"},
    {"UPDATE scene_attribute SET a = 2, b = 500 WHERE type = 6", "reference to nothing"},
    {"UPDATE scene_attribute SET a = 0, b = 0 WHERE type = 6", "reference to nothing"},
    {"UPDATE scene_attribute SET a = 9 WHERE type = 6", "unknown kind 9"},
    {"INSERT INTO scene_attribute SELECT object, position, 1, attribute, type, a, b, c "
     "FROM scene_attribute WHERE attribute = 'Intensity'",
     "second value"},
    {"UPDATE scene_object SET kind = 'unheard of' WHERE id = 0", ""},
    {"UPDATE scene_object SET name = char(10) || 'x' || char(0) WHERE id = 0", ""},
    {"UPDATE scene_attribute SET attribute = 'Unheard'", ""},
    {"UPDATE scene_attribute SET a = -1e30, b = 1e30, c = 7 WHERE type < 6", ""},
    {"UPDATE scene_attribute SET type = 3, a = 'text' WHERE type < 6", ""},
    {"DELETE FROM scene_attribute", ""},
    {"DELETE FROM document_info WHERE key = 'title'", ""},
});

} // namespace

TEST_F(HostileDocument, EveryTamperingIsRefusedForItsReasonOrHarmless) {
    for (const Tampering& tampering : tamperings) {
        const Document_var document = sampleDocument();
        addObject(*document, "shooting");
        ASSERT_TRUE(writeDocument(file("a.qor"), document->takeSnapshot()));
        change(file("a.qor"), tampering.sql);
        Result<LoadedDocument> loaded = readDocument(file("a.qor"));
        ASSERT_EQ(loaded.ok(), *tampering.says == '\0') << tampering.sql;
        if (!loaded)
            EXPECT_NE(loaded.failure().text.find(tampering.says), std::string::npos)
                << tampering.sql << " gives: " << loaded.failure().text;
        else
            EXPECT_GE(QorMake<Document>(std::move(loaded.value()))->product().nodes().size(), 3U);
    }
}

TEST_F(HostileDocument, AChangedByteIsRefusedOrHarmless) {
    writeSample("a.qor");
    const std::string whole = directory.Read("a.qor");
    std::minstd_rand random(11);
    for (int round = 0; round < 300; ++round) {
        std::string bytes = whole;
        for (int i = 0; i < 4; ++i)
            bytes[random() % bytes.size()] = static_cast<char>(random());
        directory.Write("b.qor", bytes);
        Result<LoadedDocument> loaded = readDocument(file("b.qor"));
        if (loaded)
            EXPECT_GE(QorMake<Document>(std::move(loaded.value()))->takeSnapshot().scene.size(),
                      0U);
        else
            EXPECT_FALSE(loaded.failure().text.empty());
    }
}
