#include "toolkit/input/formats/csv_reader.h"

#include <csv.h>
#include <gtest/gtest.h>
#include <zlib.h>

#include <algorithm>
#include <iterator>
#include <random>

#include "tests/toolkit/support/temporary_file.h"
#include "toolkit/errors.h"

namespace mcbin {
namespace {

using testing::messageOf;
using testing::TemporaryFiles;
using Rows = std::vector<std::vector<std::string>>;

class CsvReaderTest : public ::testing::Test {
 protected:
  std::unique_ptr<CsvReader> Open(std::string_view bytes, char delimiter = ',',
                                  bool hasHeader = true) {
    return std::make_unique<CsvReader>(
        std::make_unique<ByteSource>(files_.Write("d.csv", bytes), monitor_), delimiter, hasHeader);
  }

  static Rows ReadAll(CsvReader& reader) {
    Rows rows;
    TableRow row;
    while (reader.NextRow(row)) rows.emplace_back(row.cells.begin(), row.cells.end());
    return rows;
  }

  static std::vector<std::uint64_t> Lines(CsvReader& reader) {
    std::vector<std::uint64_t> lines;
    TableRow row;
    while (reader.NextRow(row)) lines.push_back(row.line);
    return lines;
  }

  /// The error of reading the file to its end, with the directory taken off.
  std::string ErrorOf(std::string_view bytes) {
    const std::string message = messageOf<DataError>([&] { ReadAll(*Open(bytes)); });
    const std::string prefix = files_.Directory() + "/";
    return message.rfind(prefix, 0) == 0 ? message.substr(prefix.size()) : message;
  }

  Monitor monitor_;
  TemporaryFiles files_;
};

TEST_F(CsvReaderTest, ReadsNamesAndRows) {
  const auto reader = Open("a,b\n1,x\n2,y\n");
  EXPECT_EQ(reader->ColumnNames(), (std::vector<std::string>{"a", "b"}));
  EXPECT_EQ(ReadAll(*reader), (Rows{{"1", "x"}, {"2", "y"}}));
}

TEST_F(CsvReaderTest, EveryLineEndAndNoneAtTheEndGiveTheSameRows) {
  const Rows expected = {{"1", "x"}, {"2", "y"}};
  EXPECT_EQ(ReadAll(*Open("a,b\r\n1,x\r\n2,y\r\n")), expected);
  EXPECT_EQ(ReadAll(*Open("a,b\r1,x\r2,y\r")), expected);
  EXPECT_EQ(ReadAll(*Open("a,b\n1,x\n2,y")), expected);
  EXPECT_EQ(ReadAll(*Open("a,b\r\n1,x\r\n2,y")), expected);
  EXPECT_EQ(ReadAll(*Open("\xEF\xBB\xBF"
                          "a,b\n1,x\n\n\n2,y\n\n")),
            expected);
}

TEST_F(CsvReaderTest, QuotedCellsHoldSeparatorsQuotesAndLineEnds) {
  const auto reader = Open("a,b\n\"x,1\",\"say \"\"hi\"\"\"\n\"two\nlines\",\"\"\n3,4\n");
  EXPECT_EQ(ReadAll(*reader), (Rows{{"x,1", "say \"hi\""}, {"two\nlines", ""}, {"3", "4"}}));
}

TEST_F(CsvReaderTest, KeepsBlanks) {
  EXPECT_EQ(ReadAll(*Open("a,b\n x , y\n")), (Rows{{" x ", " y"}}));
}

TEST_F(CsvReaderTest, CountsLinesWithEveryLineEnd) {
  using Lines = std::vector<std::uint64_t>;
  EXPECT_EQ(this->Lines(*Open("a,b\n1,x\n\n\"t\nu\",y\n3,z\n")), (Lines{2, 4, 6}));
  EXPECT_EQ(this->Lines(*Open("a,b\r\n1,x\r\n\r\n\"t\r\nu\",y\r\n3,z")), (Lines{2, 4, 6}));
  EXPECT_EQ(this->Lines(*Open("a,b\r1,x\r\r3,z\r")), (Lines{2, 4}));
}

TEST_F(CsvReaderTest, RewindsToTheFirstRow) {
  const auto reader = Open(
      "\xEF\xBB\xBF"
      "a,b\n1,x\n2,y\n");
  const Rows first = ReadAll(*reader);
  reader->Rewind();
  EXPECT_EQ(ReadAll(*reader), first);
  reader->Rewind();
  EXPECT_EQ(Lines(*reader), (std::vector<std::uint64_t>{2, 3}));
}

TEST_F(CsvReaderTest, WithoutAHeaderEveryRowIsDataAndColumnsAreNumbered) {
  const auto reader = Open("1,x\n2,y\n", ',', false);
  EXPECT_EQ(reader->ColumnNames(), (std::vector<std::string>{"column_1", "column_2"}));
  EXPECT_EQ(ReadAll(*reader), (Rows{{"1", "x"}, {"2", "y"}}));
}

TEST_F(CsvReaderTest, TakesOtherSeparators) {
  EXPECT_EQ(ReadAll(*Open("a\tb\n1\tx y\n\t\n", '\t')), (Rows{{"1", "x y"}, {"", ""}}));
  EXPECT_EQ(ReadAll(*Open("a;b\n1,5;x\n", ';')), (Rows{{"1,5", "x"}}));
}

TEST_F(CsvReaderTest, ReadsGzip) {
  const std::string path = files_.Path("d.csv.gz");
  const gzFile file = gzopen(path.c_str(), "wb");
  gzputs(file, "a,b\n1,x\n");
  gzclose(file);
  CsvReader reader(std::make_unique<ByteSource>(path, monitor_), ',', true);
  EXPECT_EQ(ReadAll(reader), (Rows{{"1", "x"}}));
  reader.Rewind();
  EXPECT_EQ(ReadAll(reader), (Rows{{"1", "x"}}));
}

TEST_F(CsvReaderTest, TheSecondHalfOfAGzipFileIsMissed) {
  const std::string whole = files_.Path("whole.gz");
  const gzFile file = gzopen(whole.c_str(), "wb");
  std::mt19937 engine(1);
  std::string text = "a,b\n";
  for (int i = 0; i < 5000; ++i) text += std::to_string(engine()) + ",x\n";
  gzwrite(file, text.data(), static_cast<unsigned>(text.size()));
  gzclose(file);
  const std::string bytes = testing::readFile(whole);
  const std::string half = std::string(bytes.data(), bytes.size() / 2);
  EXPECT_EQ(ErrorOf(half), "d.csv: the gzip data end too early: the file is cut short");
  std::string broken = bytes;
  broken[broken.size() / 2] = static_cast<char>(broken[broken.size() / 2] ^ 0x55);
  EXPECT_EQ(ErrorOf(broken).substr(0, 25), "d.csv: broken gzip data: ");
}

TEST_F(CsvReaderTest, RaggedRowsNameLineAndColumn) {
  EXPECT_EQ(ErrorOf("a,b,c\n1,2,3\n4,5\n"),
            "d.csv, line 3: the row has 2 of 3 cells: there is none for column 3 (c)");
  EXPECT_EQ(ErrorOf("a,b\n1,2\n\"x\ny\",5,6\n"),
            "d.csv, line 3: the row has 3 cells where there are 2 columns: cell 3 is one too many "
            "(a cell that holds the separator must be quoted)");
}

TEST_F(CsvReaderTest, StrayQuotesNameLineAndColumn) {
  EXPECT_EQ(ErrorOf("a,b\n1,x\"y\n"),
            "d.csv, line 2: column 2: a \" in the middle of a cell: quote the whole cell and "
            "double the quotes inside it");
  EXPECT_EQ(ErrorOf("a,b\n1,2\n\"x\"y,2\n"),
            "d.csv, line 3: column 1: a \" in the middle of a cell: quote the whole cell and "
            "double the quotes inside it");
}

TEST_F(CsvReaderTest, AQuotedCellThatNeverEndsNamesItsStart) {
  EXPECT_EQ(ErrorOf("a,b\n1,2\n3,\"x\n5,6\n7,8\n"),
            "d.csv, line 3: a quoted cell of the row that starts here never ends: a closing \" is "
            "missing");
}

TEST_F(CsvReaderTest, NulBytesAreNoText) {
  EXPECT_EQ(ErrorOf(std::string_view("a,b\n1,\0\n", 8)),
            "d.csv, line 2: a NUL byte: this is not UTF-8 text (convert UTF-16 text or a "
            "spreadsheet to CSV first)");
}

TEST_F(CsvReaderTest, AnEmptyFileHasNoHeader) {
  EXPECT_EQ(ErrorOf(""), "d.csv: the file is empty: it has no header and no case");
  EXPECT_EQ(ErrorOf("\n\n"), "d.csv: the file is empty: it has no header and no case");
}

TEST_F(CsvReaderTest, RowsAcrossTheBufferEndComeWhole) {
  for (const std::uint32_t seed : {1U, 2U, 3U}) {
    SCOPED_TRACE(seed);
    std::mt19937 engine(seed);
    const char* const ends[] = {"\n", "\r\n", "\r"};
    const std::string end = ends[seed - 1];
    std::string text = "a,b" + end;
    Rows expected;
    std::vector<std::uint64_t> lines;
    for (std::uint64_t line = 2; text.size() < 600'000; ++line) {
      const std::string cell(engine() % 300, 'x');
      text += cell + ",y" + end;
      expected.push_back({cell, "y"});
      lines.push_back(line);
    }
    const auto reader = Open(text);
    EXPECT_EQ(ReadAll(*reader), expected);
    reader->Rewind();
    EXPECT_EQ(Lines(*reader), lines);
  }
}

/// What the parser makes of the whole text at once: the rows up to the first error or the first
/// row that is not as long as those before.
struct Parsed {
  Rows rows = {{}};  ///< The last one is the row that has begun.
  bool failed = false;
};

Parsed parse(std::string_view text) {
  const auto onCell = [](void* cell, std::size_t size, void* parsed) {
    static_cast<Parsed*>(parsed)->rows.back().emplace_back(static_cast<char*>(cell), size);
  };
  const auto onRow = [](int, void* parsed) { static_cast<Parsed*>(parsed)->rows.emplace_back(); };
  Parsed parsed;
  csv_parser parser;
  csv_init(&parser, CSV_STRICT | CSV_STRICT_FINI);
  csv_set_space_func(&parser, [](unsigned char) { return 0; });
  parsed.failed =
      csv_parse(&parser, text.data(), text.size(), onCell, onRow, &parsed) != text.size() ||
      csv_fini(&parser, onCell, onRow, &parsed) != 0;
  csv_free(&parser);
  parsed.rows.pop_back();
  const auto ragged = std::find_if(parsed.rows.begin(), parsed.rows.end(), [&](const auto& row) {
    return row.size() != parsed.rows.front().size();
  });
  parsed.failed = parsed.failed || ragged != parsed.rows.end();
  parsed.rows.erase(ragged, parsed.rows.end());
  return parsed;
}

TEST_F(CsvReaderTest, RandomTextsComeAsTheParserReadsThem) {
  const unsigned seed = 20240229;
  SCOPED_TRACE(seed);
  std::mt19937 engine(seed);
  const std::string_view tokens[] = {"a",       "",           "b c",      "\"a\"",      "\"\"",
                                     "\"a,b\"", "\"a\"\"b\"", "\"a\nb\"", "\"a\r\nb\"", " ",
                                     "\"a\" ",  "a\"",        "\""};
  const std::string_view ends[] = {"\n", "\r\n", "\r", "\n\n", ""};
  int failures = 0;
  for (int i = 0; i < 600; ++i) {
    // Most texts are well formed; the last tokens and ends are not, or seldom.
    const std::size_t tokenCount = engine() % 4 == 0 ? std::size(tokens) : 10;
    std::string text;
    for (int row = 0; row < 20; ++row) {
      text += tokens[engine() % tokenCount];
      text += ',';
      text += tokens[engine() % tokenCount];
      if (engine() % 128 == 0) text += ",x";
      text += ends[engine() % (row == 19 ? 5 : 4)];
    }
    const Parsed expected = parse(text);
    if (expected.rows.empty()) continue;
    failures += expected.failed ? 1 : 0;
    CsvReader reader(std::make_unique<ByteSource>(files_.Write(std::to_string(i), text), monitor_),
                     ',', false);
    Rows rows;
    TableRow row;
    bool failed = false;
    try {
      while (reader.NextRow(row)) rows.emplace_back(row.cells.begin(), row.cells.end());
    } catch (const DataError&) {
      failed = true;
    }
    ASSERT_EQ(rows, expected.rows) << text;
    ASSERT_EQ(failed, expected.failed) << text;
  }
  EXPECT_GT(failures, 100);
}

}  // namespace
}  // namespace mcbin
