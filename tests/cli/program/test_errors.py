"""Everything that can be wrong: each with its message and exit code."""

import bz2
import gzip
import lzma
import sqlite3
import unittest

from program import LOANS, ProgramTest

DATA, USAGE = 1, 2

# name, bytes of the file, arguments after the file, message (FILE stands for the file's name)
BROKEN_FILES = [
    ("empty", b"", ["-e"], "FILE: the file is empty: it has no header and no case"),
    ("only blank lines", b"\n\r\n\n", ["-e"],
     "FILE: the file is empty: it has no header and no case"),
    ("header only, no target", b"a,b\n", ["-e"],
     "there is no scale column to cut:\n  a: no case has a value\n  b: no case has a value"),
    ("another separator", b"a;t\n1;x\n2;y\n", ["-e"],
     "there is no scale column to cut:\n  a;t: categorical: it holds texts\n  it is "
     "the only column: is the separator right? see --delimiter"),
    ("header only, target", b"a,t\n", ["-t", "t"], "FILE: no case has a category in the target t"),
    ("row too short", b"a,b,c\n1,2,3\n4,5\n", ["-e"],
     "FILE, line 3: the row has 2 of 3 cells: there is none for column 3 (c)"),
    ("row too long", b"a,b\n1,2,3\n", ["-e"],
     "FILE, line 2: the row has 3 cells where there are 2 columns: cell 3 is one too many (a cell "
     "that holds the separator must be quoted)"),
    ("short row behind an embedded newline", b'a,b\n"1\n",2\n3\n', ["-e"],
     "FILE, line 4: the row has 1 of 2 cells: there is none for column 2 (b)"),
    ("short last row without a line end", b"a,b\n1,2\n3", ["-e"],
     "FILE, line 3: the row has 1 of 2 cells: there is none for column 2 (b)"),
    ("quote in a cell", b'a,b\n1,2"3\n', ["-e"],
     'FILE, line 2: column 2: a " in the middle of a cell: quote the whole cell and double the '
     "quotes inside it"),
    ("text behind a quoted cell", b'a,b\n"1"x,2\n', ["-e"],
     'FILE, line 2: column 1: a " in the middle of a cell: quote the whole cell and double the '
     "quotes inside it"),
    ("quote in the header", b'a"b,c\n1,2\n', ["-e"],
     'FILE, line 1: column 1: a " in the middle of a cell: quote the whole cell and double the '
     "quotes inside it"),
    ("unclosed quote", b'a,b\n1,2\n"3,4\n5,6\n', ["-e"],
     'FILE, line 3: a quoted cell of the row that starts here never ends: a closing " is missing'),
    ("a cell without an end", gzip.compress(b'a,b\n1,2\n3,"' + b"x\n" * (8 << 20) + b"yy"), ["-e"],
     'FILE, line 3: the cell in column 2 is longer than 16 MiB: is a closing " missing?'),
    ("a row without an end", gzip.compress(b"a,b\n" + b"1,2," * (17 << 20)), ["-e"],
     "FILE, line 2: the row is longer than 64 MiB: do its lines end?"),
    ("UTF-16", "a,b\n1,2\n".encode("utf-16"), ["-e"],
     "FILE: this is UTF-16 text: convert it (iconv -f UTF-16 -t UTF-8)"),
    ("zip", b"PK\x03\x04\x14\0\0", ["-e"],
     "FILE: this is a zip archive or a spreadsheet (.xlsx, .ods): unpack it or save it as CSV"),
    ("office document", b"\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1\0", ["-e"],
     "FILE: this is an office document (.xls): save its sheet as CSV"),
    ("xz", lzma.compress(b"a\n1\n"), ["-e"],
     "FILE: this is compressed by xz: unpack it first (xz -dc)"),
    ("bzip2", bz2.compress(b"a\n1\n"), ["-e"],
     "FILE: this is compressed by bzip2: unpack it first (bzip2 -dc)"),
    ("zstd", b"\x28\xb5\x2f\xfd\x04\0", ["-e"],
     "FILE: this is compressed by zstd: unpack it first (zstd -dc)"),
    ("lz4", b"\x04\x22\x4d\x18\x64\x40", ["-e"],
     "FILE: this is compressed by lz4: unpack it first (lz4 -dc)"),
    ("7z", b"7z\xbc\xaf\x27\x1c\0\4", ["-e"], "FILE: this is a 7z archive: unpack it first"),
    ("Parquet", b"PAR1\x15\x04\x15", ["-e"], "FILE: this is a Parquet file: convert it to CSV"),
    ("Arrow", b"ARROW1\0\0\xff", ["-e"], "FILE: this is an Arrow file: convert it to CSV"),
    ("HDF5", b"\x89HDF\r\n\x1a\n\0", ["-e"],
     "FILE: this is an HDF5 file: convert the table to CSV"),
    ("PDF", b"%PDF-1.7\n", ["-e"], "FILE: this is a PDF document: the table is needed as CSV"),
    ("xlsx in gzip", gzip.compress(b"PK\x03\x04\x14\0\0"), ["-e"],
     "FILE: this is a zip archive or a spreadsheet (.xlsx, .ods): unpack it or save it as CSV"),
    ("NUL byte", b"a,b\n1,2\n3,\x00\n", ["-e"],
     "FILE, line 3: a NUL byte: this is not UTF-8 text (convert UTF-16 text or a spreadsheet to "
     "CSV first)"),
    ("Latin-1 header", b"a,caf\xe9\n1,2\n", ["-e"],
     "FILE: the name of column 2 is not UTF-8 text: convert the file (iconv -f LATIN1 -t UTF-8)"),
    ("Latin-1 category", b"a,t\n1,x\n2,caf\xe9\n", ["-t", "t"],
     "FILE, line 3: the category in column t is not UTF-8 text: convert the file (iconv -f LATIN1 "
     "-t UTF-8)"),
    ("repeated name", b"a,b,a\n1,2,3\n", ["-e"],
     "FILE: columns 1 and 3 are both named 'a': rename one of them"),
    ("given name meets numbered name", b"column_2,\n1,2\n", ["-e"],
     "FILE: columns 1 and 2 are both named 'column_2': rename one of them"),
    ("numbers, then a text", b"a,t\n1,x\n2,y\nlow,y\n", ["-t", "t"],
     "FILE, line 4: column a mixes numbers and texts: 'low' is a text, while '1' (FILE, line 2) is "
     "a number; if the text stands for a missing value say --na 'low', if the column holds "
     "categories say --type a=category, else --exclude a"),
    ("texts, then a number", b"a,t\nlow,x\n2,y\n", ["-t", "t"],
     "FILE, line 2: column a mixes numbers and texts: 'low' is a text, while '2' (FILE, line 3) is "
     "a number; if the text stands for a missing value say --na 'low', if the column holds "
     "categories say --type a=category, else --exclude a"),
    ("decimal comma", b'a,t\n"1,5",x\n2,y\n', ["-t", "t", "--type", "a=scale"],
     "FILE, line 2: '1,5' in column a is not a number; if it stands for a missing value say --na "
     "'1,5'"),
    ("number beyond double", b"a,t\n1,x\n1e400,y\n", ["-t", "t"],
     "FILE, line 3: '1e400' in column a is too large for a number"),
    ("the library's missing number", b"a,t\n1,x\n-1.7976931348623157e308,y\n", ["-t", "t"],
     "FILE, line 3: '-1.7976931348623157e308' in column a is the number that stands for a missing "
     "value inside the library: name it with --na if it is missing"),
    ("text in the weight", b"a,w,t\n1,1,x\n2,much,y\n", ["-t", "t", "-w", "w"],
     "FILE, line 3: 'much' in column w is not a number; if it stands for a missing value say --na "
     "'much'"),
    ("no weight is positive", b"a,w,t\n1,0,x\n2,-1,y\n3,,y\n", ["-t", "t", "-w", "w"],
     "no case can be used: every weight in column w is missing or, truncated to a whole number, not "
     "positive (--weight-rounding round rounds it)"),
    ("every weight rounds to zero", b"a,w,t\n1,0.1,x\n2,0.2,y\n",
     ["-t", "t", "-w", "w", "--weight-rounding", "round"],
     "no case can be used: every weight in column w is missing or, rounded to a whole number, not "
     "positive"),
    ("sum of weights beyond double", b"a,w,t\n1,1e308,x\n2,1,y\n3,1e308,y\n", ["-t", "t", "-w", "w"],
     "FILE, line 4: the weights in column w add up to more than a number can hold: divide them all "
     "by the same large number"),
    ("single category", b"a,t\n1,x\n2,x\n", ["-t", "t"],
     "FILE: the target t has the single category 'x': there is nothing to tell apart"),
    ("target all missing", b"a,t\n1,NA\n2,\n", ["-t", "t"],
     "FILE: no case has a category in the target t"),
    ("257 categories", b"a,t\n" + b"".join(b"1,c%d\n" % i for i in range(257)), ["-t", "t"],
     "FILE, line 258: the target t has more than 256 categories: 'c256' is one too many; is it "
     "really a class? (--missing t=TEXT and --na take texts out)"),
    ("nothing but texts", b"a,t\nx,y\nz,w\n", ["-t", "t"],
     "there is no scale column to cut:\n  a: categorical: it holds texts"),
    ("named column of texts", b"a,b,t\nx,1,y\nz,2,w\n", ["-t", "t", "-a", "a"],
     "--attribute a: the column cannot be cut: categorical: it holds texts"),
    ("no such target", b"a,t\n1,x\n", ["-t", "class"],
     "--target: no column 'class'; the columns are: a, t"),
    ("target number beyond the columns", b"a,t\n1,x\n", ["-t", "3"],
     "--target: no column '3'; the columns are: a, t"),
    ("no such event", b"a,t\n1,1\n2,0\n", ["-t", "t", "--event", "yes"],
     "--event yes: the target t has the categories '0' and '1'"),
    ("an event of three categories", b"a,t\n1,x\n2,y\n3,z\n", ["-t", "t", "--event", "x"],
     "--event: the target t has 3 categories; evidence is for two"),
    ("an adjustment for three categories", b"a,t\n1,x\n2,y\n3,z\n",
     ["-t", "t", "--woe-adjustment", "1"],
     "--woe-adjustment: the target t has 3 categories; evidence is for two"),
    ("no such column to cut", b"a,t\n1,x\n", ["-t", "t", "--cuts", "b=1"],
     "--cuts: no column 'b'; the columns are: a, t"),
    ("cuts of a column of texts", b"a,b,t\nx,1,y\nz,2,w\n", ["-t", "t", "--cuts", "a=1"],
     "--cuts a: the column cannot be cut: categorical: it holds texts"),
    ("cuts of no file", b"a,t\n1,x\n2,y\n", ["-t", "t", "--cuts", "nope.txt"],
     "cannot open nope.txt: No such file or directory"),
    ("no such weight", b"a,t\n1,x\n", ["-t", "t", "-w", "w"],
     "--weight: no column 'w'; the columns are: a, t"),
    ("no such attribute", b"a,t\n1,x\n", ["-t", "t", "-a", "b*"],
     "--attribute: no column 'b*'; the columns are: a, t"),
    ("no such excluded column", b"a,t\n1,x\n", ["-t", "t", "-x", "b"],
     "--exclude: no column 'b'; the columns are: a, t"),
    ("no such missing column", b"a,t\n1,x\n", ["-t", "t", "--missing", "b=1"],
     "--missing: no column 'b'; the columns are: a, t"),
    ("no such range column", b"a,t\n1,x\n", ["-t", "t", "--missing-range", "b=1:2"],
     "--missing-range: no column 'b'; the columns are: a, t"),
    ("no such typed column", b"a,t\n1,x\n", ["-t", "t", "--type", "b=scale"],
     "--type: no column 'b'; the columns are: a, t"),
    ("wrong separator", b"a;t\n1;x\n", ["-t", "t"],
     "--target: no column 't'; the columns are: a;t (only one: is the separator right? see "
     "--delimiter)"),
    ("broken gzip", gzip.compress(b"a,b\n1,2\n" * 1000)[:40], ["-e"],
     "FILE: the gzip data end too early: the file is cut short"),
    ("database cut short", b"SQLite format 3\x00" + b"\x01" * 200, ["-e", "--table", "t"],
     "FILE: file is not a database"),
]

# arguments, message
WRONG_USAGE = [
    (["fit"], "DATA is required"),
    (["fit", "d.csv"],
     "name the target with --target COLUMN, or ask for --equal-frequency bins"),
    (["fit", "d.csv", "-t"], "--target: 1 required COLUMN missing"),
    (["fit", "d.csv", "-e", "-t", "t"],
     "--equal-frequency bins have no target: leave --target out, or exclude the column with "
     "--exclude"),
    *((["fit", "d.csv", "-e", option, value], f"{option} is for binning with a --target")
      for option, value in (("--threshold", "5"), ("--small-bins", "0.5"), ("--event", "x"),
                            ("--woe-adjustment", "1"), ("--min-bin-share", "0.1"),
                            ("--min-bin-weight", "5"), ("--max-bins", "3"))),
    (["fit", "d.csv", "-t", "t", "--min-bin-share", "2"], "--min-bin-share must be from 0 to 1"),
    (["fit", "d.csv", "-t", "t", "--min-bin-share", "5%"],
     "--min-bin-share: takes a number, not '5%'"),
    (["fit", "d.csv", "-t", "t", "--min-bin-weight", "-1"],
     "--min-bin-weight must be finite and not negative"),
    (["fit", "d.csv", "-t", "t", "--max-bins", "1"], "--max-bins must be at least 2"),
    (["fit", "d.csv", "-t", "t", "--cuts", "a=2,1"],
     "--cuts a=2,1: the cut points must ascend: '1' is not above the one before"),
    (["fit", "d.csv", "-t", "t", "--cuts", "a=x"], "--cuts a=x: 'x' is not a finite number"),
    (["fit", "d.csv", "-t", "t", "--cuts", "=1"], "--cuts =1: write COLUMN=NUMBER,NUMBER..."),
    (["fit", "d.csv", "-t", "t", "--cuts", "a=1", "--cuts", "1=2"],
     "--cuts: column a is given twice"),
    (["fit", "d.csv", "-t", "t", "--cuts", "t=1"],
     "--cuts: column t is not to be cut: it is the target"),
    (["fit", "d.csv", "-t", "t", "-w", "w", "--cuts", "w=1"],
     "--cuts: column w is not to be cut: it is the weight"),
    (["fit", "d.csv", "-t", "t", "-x", "a", "--cuts", "a=1"],
     "--cuts: column a is not to be cut: excluded by --exclude"),
    (["fit", "d.csv", "-t", "t", "--woe-adjustment", "1e-101"],
     "--woe-adjustment must lie between 1e-100 and 1e+100"),
    (["fit", "d.csv", "-t", "t", "--woe-adjustment", "inf"],
     "--woe-adjustment must lie between 1e-100 and 1e+100"),
    (["fit", "d.csv", "-t", "t", "--woe-adjustment", "half"],
     "--woe-adjustment: takes a number, not 'half'"),
    (["fit", "d.csv", "-e", "--bins", "1"], "--bins must be at least 2"),
    (["fit", "d.csv", "-e", "--bins", "many"], "--bins: takes a whole number, not 'many'"),
    (["fit", "d.csv", "-e", "--bins", "2.5"], "--bins: takes a whole number, not '2.5'"),
    (["fit", "d.csv", "-t", "t", "--threshold", "-1"], "--threshold must not be negative"),
    (["fit", "d.csv", "-t", "t", "--small-bins", "1.5"], "--small-bins must be from 0 to 1"),
    (["fit", "d.csv", "-e", "--bins", "99999999999"],
     "--bins: takes a whole number, not '99999999999'"),
    (["fit", "d.csv", "-t", "t", "--small-bins", "nan"],
     "--small-bins: takes a number, not 'nan'"),
    (["fit", "d.csv", "-e", "--weight-rounding", "round"], "--weight-rounding needs a --weight"),
    (["fit", "d.csv", "-e", "-w", "w", "--weight-rounding", "up"],
     "--weight-rounding: up not in {truncate,round}"),
    (["fit", "d.csv", "-e", "--delimiter", "ab"],
     "--delimiter takes one character or the word tab, not 'ab'"),
    (["fit", "d.csv", "-e", "--delimiter", '"'],
     "--delimiter takes one character or the word tab, not '\"'"),
    (["fit", "d.csv", "-e", "--table", "t", "--query", "q"], "--table excludes --query"),
    (["fit", "d.csv", "-e", "--table", "t"],
     "d.csv is no SQLite database: --table and --query do not apply to it"),
    (["fit", "d.csv", "--targt", "t"], "there is no option --targt; did you mean --target?"),
    (["fit", "d.csv", "e.csv", "-e"], "one argument too many: e.csv"),
    (["score", "m.json"], "DATA is required"),
    (["score", "-", "-"], "the model and the data cannot both come from standard input"),
    (["score", "m.json", "d.csv", "--to", "sql"], "--to: sql not in {text,json,csv,html}"),
    (["score", "m.json", "d.csv", "-t", "t", "--no-target"], "--target excludes --no-target"),
    (["score", "m.json", "d.csv", "-w", "w", "--no-weight"], "--weight excludes --no-weight"),
    (["help"], "COMMAND is required"),
    (["help", "fot"], "there is no command fot; did you mean fit?"),
    (["help", "frobnicate"], "there is no command frobnicate"),
    (["fot", "d.csv"], "there is no command fot; did you mean fit?"),
    (["fit", "d.csv", "-t", "t", "-a", "a", "-x", "a"],
     "column a is named by --attribute and by --exclude a"),
    (["fit", "d.csv", "-t", "t", "-a", "t"],
     "column t cannot be named by --target and by --attribute"),
    (["fit", "d.csv", "-t", "t", "-w", "t"],
     "column t cannot be named by --weight and by --target"),
    (["fit", "d.csv", "-t", "t", "--type", "a"],
     "--type a: write --type COLUMN=scale or COLUMN=category"),
    (["fit", "d.csv", "-t", "t", "--type", "a=number"],
     "--type a=number: the type is scale or category, not 'number'"),
    (["fit", "d.csv", "-t", "t", "--type", "t=scale"],
     "--type t=scale: the target always is a category"),
    (["fit", "d.csv", "-t", "t", "--missing", "a"],
     "--missing a: write --missing COLUMN=VALUE,VALUE..."),
    (["fit", "d.csv", "-t", "t", "--missing", "a=none"],
     "--missing a=none: 'none' is not a number; a text that stands for a missing value is declared "
     "with --na"),
    (["fit", "d.csv", "-t", "t", "--missing-range", "a=2:1"],
     "--missing-range a=2:1: write COLUMN=LOW:HIGH with numbers, LOW not above HIGH; an end left "
     "empty is open"),
    (["fit", "d.csv", "-t", "t", "--missing-range", "t=1:2"],
     "--missing-range is for numbers; the target's missing categories are named with --missing"),
]


class BrokenFiles(ProgramTest):
    def test_every_broken_file(self):
        for name, content, arguments, message in BROKEN_FILES:
            with self.subTest(name):
                self.file("d.csv", content)
                self.check(DATA, message.replace("FILE", "d.csv"), "fit", "d.csv", *arguments)
                self.check(DATA, message.replace("FILE", "standard input"), "fit", "-", *arguments,
                           stdin=content) if b"SQLite" not in content else None

    def check(self, code, message, *arguments, **options):
        """Like fail_with, for messages of several lines."""
        result = self.run_program(*arguments, **options)
        self.assertEqual(result.stdout, "")
        self.assertTrue(result.stderr.endswith("mcbin: " + message + "\n"),
                        (result.stderr, message))
        self.assertEqual(result.returncode, code)


class WrongUsage(ProgramTest):
    def test_every_wrong_command_line(self):
        self.file("d.csv", "a,w,t\n1,1,x\n2,1,y\n")
        for arguments, message in WRONG_USAGE:
            with self.subTest(arguments):
                result = self.fail_with(USAGE, message, *arguments)
                command = "mcbin" if arguments[0] == "fot" else "mcbin " + arguments[0]
                self.assertTrue(result.stderr.endswith(f"See {command} --help.\n"))

    def test_no_command(self):
        result = self.run_program()
        self.assertEqual(result.returncode, USAGE)
        self.assertTrue(result.stderr.startswith("mcbin: name a command: fit"))


class Files(ProgramTest):
    def test_files_that_cannot_be_read_or_written(self):
        self.fail_with(DATA, "cannot open nope.csv: No such file or directory", "fit", "nope.csv",
                       "-e")
        self.fail_with(DATA, "cannot open tmp: it is a directory", "fit", "tmp", "-e")
        result = self.run_program("fit", LOANS, "-e", "-o", "no/m.json")
        self.assertEqual(result.returncode, DATA)
        # Not even the plan of the columns: the path is tried before the data are read.
        self.assertEqual(result.stderr,
                         "mcbin: cannot write no/m.json: No such file or directory\n")

    def test_an_output_without_a_name_is_refused_before_the_work(self):
        for command in (["fit", "d.csv", "-e"], ["apply", "m.json", "d.csv"],
                        ["export", "m.json", "--to", "sql"], ["report", "m.json"],
                        ["score", "m.json", "d.csv"]):
            self.fail_with(USAGE, "--output: the name of a file is not empty", *command, "-o", "")

    def test_models_that_cannot_be_read(self):
        self.file("deep.json", "[" * 100_000 + "]" * 100_000)
        for arguments in (["show"], ["report"], ["export", "--to", "sql"], ["apply", LOANS]):
            command, *rest = arguments
            self.fail_with(DATA, "cannot open tmp: it is a directory", command, "tmp", *rest)
            self.fail_with(DATA, "deep.json: nested more than 100 deep: name a model that mcbin "
                           "fit -o wrote", command, "deep.json", *rest)

    def test_what_is_read_is_not_written_over(self):
        self.file("d.csv", "a\n1\n2\n")
        self.succeed("fit", "d.csv", "-e", "--bins", "2", "-o", "m.json")
        for name, content, *arguments in (
                ("./d.csv", "the data", "fit", "d.csv", "-e"),
                ("./d.csv", "the data", "apply", "m.json", "d.csv"),
                ("./m.json", "the model", "apply", "m.json", "d.csv"),
                ("./m.json", "the model", "export", "m.json", "--to", "sql"),
                ("./m.json", "the model", "report", "m.json"),
                ("./m.json", "the model", "score", "m.json", "d.csv"),
                ("./d.csv", "the data", "score", "m.json", "d.csv")):
            before = (self.directory / name).read_text()
            self.fail_with(USAGE, f"--output {name} is the file of {content}: name another",
                           *arguments, "-o", name)
            self.assertEqual((self.directory / name).read_text(), before)
        # Standard input and output, whatever files are there.
        self.file("-", "a\n")
        self.succeed("apply", "m.json", "-", stdin=b"a\n1\n")


class Cuts(ProgramTest):
    def test_files_of_cut_points(self):
        self.file("d.csv", "a,t\n1,x\n2,y\n")
        for content, message in (("", "there are no cut points"),
                                 ("a\n", "line 1: write COLUMN=NUMBER,NUMBER..."),
                                 ("\na=1,one\n", "line 2: 'one' is not a finite number")):
            self.file("cuts.txt", content)
            place = "cuts.txt, " if message.startswith("line") else "cuts.txt: "
            self.fail_with(DATA, place + message, "fit", "d.csv", "-t", "t", "--cuts", "cuts.txt")

    def test_a_model_with_other_ends(self):
        self.file("d.csv", "a,t\n1,x\n2,y\n")
        for fitted, other, advice in (([], ["--left-closed"], "(a, b]: leave --left-closed out"),
                                      (["--left-closed"], [], "[a, b): say --left-closed")):
            self.succeed("fit", "d.csv", "-t", "t", "-o", "m.json", *fitted)
            self.fail_with(USAGE, "--cuts: the bins of the model are " + advice,
                           "fit", "d.csv", "-t", "t", "--cuts", "m.json", *other)


class Databases(ProgramTest):
    def setUp(self):
        super().setUp()
        with sqlite3.connect(self.directory / "d.db") as database:
            database.execute("CREATE TABLE loans (a, b, t)")
            database.execute("CREATE VIEW old AS SELECT a FROM loans")
            database.executemany("INSERT INTO loans VALUES (?, ?, ?)",
                                 [(1, b"\x01", "x"), (2, None, "y")])
        database.close()

    def test_wrong_usage(self):
        self.fail_with(USAGE, "d.db is an SQLite database: name what to read with --table or "
                       "--query", "fit", "d.db", "-e")
        self.fail_with(USAGE, "d.db is an SQLite database: --no-header and --delimiter are for text"
                       " files", "fit", "d.db", "-e", "--no-header", "--table", "loans")

    def test_data_errors(self):
        for arguments, message in (
            (["--table", "lones"], "d.db: there is no table 'lones'; the tables are: loans, old"),
            (["--query", "SELECT nope FROM loans"], "d.db: no such column: nope"),
            (["--query", "SELEC a"], 'd.db: near "SELEC": syntax error'),
            (["--query", ""], "d.db: the query is empty"),
            (["--query", "SELECT 1; DROP TABLE loans"],
             "d.db: the query must be one SELECT statement; there is more behind it"),
            (["--query", "DELETE FROM loans"],
             "d.db: the query must be a SELECT statement, which gives rows"),
            (["--query", "SELECT a, a FROM loans"],
             "d.db: columns 1 and 2 are both named 'a': rename one of them"),
            (["--table", "loans"],
             "d.db, row 1: column b holds a BLOB, which is neither a number nor a text: name the "
             "columns you want with --query"),
        ):
            with self.subTest(arguments):
                self.fail_with(DATA, message, "fit", "d.db", "-e", *arguments)

    def test_a_database_needs_a_plain_file(self):
        content = (self.directory / "d.db").read_bytes()
        self.file("d.db.gz", gzip.compress(content))
        message = ": a database can only be read from a plain file: unpack or save it first"
        self.fail_with(DATA, "d.db.gz" + message, "fit", "d.db.gz", "-e", "--table", "loans")
        self.fail_with(DATA, "standard input" + message, "fit", "-", "-e", "--table", "loans",
                       stdin=content)


if __name__ == "__main__":
    unittest.main()
