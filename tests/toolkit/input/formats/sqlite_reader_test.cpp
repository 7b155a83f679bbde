#include "toolkit/input/formats/sqlite_reader.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include "tests/toolkit/support/temporary_file.h"
#include "toolkit/errors.h"

namespace mcbin {
namespace {

using testing::messageOf;
using testing::TemporaryFiles;
using Rows = std::vector<std::vector<std::string>>;

class SqliteReaderTest : public ::testing::Test {
 protected:
  SqliteReaderTest() : path_(files_.Path("d.db")) {
    Execute(
        "CREATE TABLE \"the \"\"t\" (a REAL, b INTEGER, c TEXT);"
        "INSERT INTO \"the \"\"t\" VALUES (0.1, 9007199254740993, 'x'), (9e999, NULL, '');"
        "CREATE TABLE blobs (a); INSERT INTO blobs VALUES (x'00');");
  }

  void Execute(const char* sql) const {
    sqlite3* database = nullptr;
    sqlite3_open(path_.c_str(), &database);
    EXPECT_EQ(sqlite3_exec(database, sql, nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(database);
    sqlite3_close(database);
  }

  static Rows ReadAll(SqliteReader& reader) {
    Rows rows;
    TableRow row;
    while (reader.NextRow(row)) rows.emplace_back(row.cells.begin(), row.cells.end());
    return rows;
  }

  std::string ErrorOf(const std::optional<std::string>& table,
                      const std::optional<std::string>& query) const {
    const std::string message = messageOf<DataError>([&] {
      SqliteReader reader(path_, table, query, monitor_);
      ReadAll(reader);
    });
    return message.substr(std::min(message.size(), files_.Directory().size() + 1));
  }

  mutable Monitor monitor_;
  TemporaryFiles files_;
  std::string path_;
};

TEST_F(SqliteReaderTest, ReadsATableTwice) {
  SqliteReader reader(path_, "the \"t", std::nullopt, monitor_);
  EXPECT_EQ(reader.ColumnNames(), (std::vector<std::string>{"a", "b", "c"}));
  const Rows expected = {{"0.1", "9007199254740993", "x"}, {"inf", "", ""}};
  EXPECT_EQ(ReadAll(reader), expected);
  reader.Rewind();
  EXPECT_EQ(ReadAll(reader), expected);
}

TEST_F(SqliteReaderTest, RealsReadBackExactly) {
  SqliteReader reader(path_, std::nullopt, "SELECT 0.1 + 0.2 AS s", monitor_);
  EXPECT_EQ(ReadAll(reader), (Rows{{"0.30000000000000004"}}));
}

TEST_F(SqliteReaderTest, ReadsAQuery) {
  SqliteReader reader(path_, std::nullopt, "SELECT b, c AS label FROM \"the \"\"t\" ; ", monitor_);
  EXPECT_EQ(reader.ColumnNames(), (std::vector<std::string>{"b", "label"}));
  EXPECT_EQ(ReadAll(reader).size(), 2U);
}

TEST_F(SqliteReaderTest, RefusalsSayWhatIsThere) {
  EXPECT_EQ(ErrorOf("nope", std::nullopt),
            "d.db: there is no table 'nope'; the tables are: blobs, the \"t");
  EXPECT_EQ(ErrorOf("blobs", std::nullopt),
            "d.db, row 1: column a holds a BLOB, which is neither a number nor a text: name the "
            "columns you want with --query");
  EXPECT_EQ(ErrorOf(std::nullopt, "SELECT"), "d.db: incomplete input");
  EXPECT_EQ(ErrorOf(std::nullopt, "SELECT nope FROM blobs"), "d.db: no such column: nope");
  EXPECT_EQ(ErrorOf(std::nullopt, "-- nothing"), "d.db: the query is empty");
  EXPECT_EQ(ErrorOf(std::nullopt, "SELECT 1; SELECT 2"),
            "d.db: the query must be one SELECT statement; there is more behind it");
  EXPECT_EQ(ErrorOf(std::nullopt, "DELETE FROM blobs"),
            "d.db: the query must be a SELECT statement, which gives rows");
  EXPECT_EQ(ErrorOf(std::nullopt, "SELECT 1 AS x, 2 AS x"),
            "d.db: columns 1 and 2 are both named 'x': rename one of them");
}

TEST_F(SqliteReaderTest, BothPassesSeeTheSameRows) {
  Execute("PRAGMA journal_mode=WAL");
  SqliteReader reader(path_, "the \"t", std::nullopt, monitor_);
  const Rows first = ReadAll(reader);
  Execute("INSERT INTO \"the \"\"t\" VALUES (1, 2, 'new')");
  reader.Rewind();
  EXPECT_EQ(ReadAll(reader), first);
}

}  // namespace
}  // namespace mcbin
