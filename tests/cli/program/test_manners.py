"""How the program behaves in a shell."""

import json
import os
import pty
import signal
import subprocess
import time
import unittest

from program import LOANS, MCBIN, ON_WINDOWS, ROOT, STARTED, ProgramTest, repeated_when_lost

COMMANDS = ["fit", "apply", "show", "export", "report", "score"]
FIT = ["fit", str(LOANS), "--target", "default", "--missing", "income=-1"]


class Help(ProgramTest):
    def test_version(self):
        self.assertRegex(self.succeed("--version").stdout, r"^mcbin \d+\.\d+\.\d+\n$")
        self.assertEqual(self.succeed("-V").stdout, self.succeed("--version").stdout)

    def test_a_command_helps_with_another(self):
        for command in [*COMMANDS, "help"]:
            self.assertEqual(self.succeed("help", command).stdout,
                             self.succeed(command, "--help").stdout)

    def test_help_goes_to_standard_output_and_succeeds(self):
        for arguments in ([], *([command] for command in COMMANDS)):
            result = self.succeed(*arguments, "--help")
            self.assertIn("Usage: mcbin", result.stdout)
            self.assertEqual(result.stderr, "")

    def test_every_command_is_in_the_help(self):
        text = self.succeed("--help").stdout
        for command in COMMANDS:
            self.assertRegex(text, rf"(?m)^  {command} ")

    def test_help_lists_the_default_missing_texts(self):
        text = " ".join(self.succeed("fit", "--help").stdout.split())
        model = self.fit(LOANS, "-e")
        self.assertIn(f"[{' '.join(model['options']['naTexts'])}]", text)

    def test_the_examples_work_as_pasted(self):
        """In a directory with the project's examples/ and this program as mcbin."""
        (self.directory / "bin").mkdir()
        (self.directory / "bin" / "mcbin").symlink_to(MCBIN)
        (self.directory / "examples").symlink_to(ROOT / "examples")
        self.environment["PATH"] = f"{self.directory / 'bin'}:{os.environ['PATH']}"
        for command in COMMANDS:
            text = self.succeed(command, "--help").stdout.split("Examples:\n")[1]
            examples = text.split("\n\n")[0].replace("\\\n", " ")
            lines = [line.strip() for line in examples.splitlines() if line.strip()]
            self.assertEqual(len(lines), 2, lines)
            for line in lines:
                result = subprocess.run(
                    ["bash", "-c", line], cwd=self.directory, env=self.environment,
                    stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False, timeout=120,
                )
                self.assertEqual(result.returncode, 0, (line, result.stderr))


class Quiet(ProgramTest):
    def test_only_what_was_asked_for_is_told(self):
        loud = self.succeed(*FIT)
        quiet = self.succeed(*FIT, "--quiet")
        self.assertEqual((quiet.stdout, quiet.stderr), (loud.stdout, ""))
        self.assertIn("4000 cases", loud.stderr)
        self.fit(LOANS, "-e", "-o", "model.json")
        self.assertEqual(self.succeed("-q", "apply", "model.json", str(LOANS)).stderr, "")
        self.assertIn("total", self.succeed(*FIT, "-q", "--timings").stderr)

    def test_errors_are_told(self):
        self.fail_with(2, "--bins must be at least 2", "-q", *FIT, "--bins", "1")


class ManualPage(ProgramTest):
    def test_it_holds_the_help_of_every_command(self):
        page = subprocess.run(
            ["python3", str(ROOT / "cli" / "make_man_page.py"), MCBIN],
            stdout=subprocess.PIPE, check=True, text=True, timeout=120,
        ).stdout
        read_back = page.replace("\\-", "-").replace("\\&", "").replace("\\e", "\\")
        for command in COMMANDS:
            self.assertIn(f"\n.SH {command.upper()}\n", page)
            self.assertIn(self.succeed(command, "--help").stdout.strip(), read_back)
        for line in page.splitlines():
            if line.startswith((".", "'")):
                self.assertRegex(line, r"^\.(TH|SH|TP|B|I|nf|fi)\b")


class Streams(ProgramTest):
    def test_json_is_valid_or_nothing(self):
        json.loads(self.succeed(*FIT, "--json").stdout)
        self.file("bad.csv", "a,t\n1,x\n2\n")
        self.assertEqual(self.run_program("fit", "bad.csv", "-t", "t", "--json").stdout, "")

    def test_a_full_disk_is_an_error(self):
        with open("/dev/full", "wb") as full:
            result = subprocess.run([MCBIN, *FIT], stdout=full, stderr=subprocess.PIPE,
                                    env=self.environment, check=False)
        self.assertEqual(result.returncode, 1)
        self.assertIn(b"mcbin: cannot write standard output: No space left on device\n",
                      result.stderr)

    @unittest.skipIf(ON_WINDOWS, "what runs the program needs them")
    def test_closed_streams_are_no_place_for_files(self):
        def close_all():
            for descriptor in range(3):
                os.close(descriptor)

        process = subprocess.run([MCBIN, *FIT, "-o", self.directory / "m.json"], check=False,
                                 env=self.environment, preexec_fn=close_all)
        self.assertEqual(process.returncode, 1)  # the tables could not be printed
        self.assertEqual((self.directory / "m.json").read_text(),
                         self.succeed(*FIT, "--json").stdout)

    def test_messages_that_nobody_gets_change_no_result(self):
        """Neither those before the work nor those after it."""
        self.succeed(*FIT, "-o", self.directory / "m.json")
        self.file("d.csv", "x,t,w\n1,a,1\n2,b,0\n")
        for command in (FIT, ["apply", "m.json", str(LOANS)],
                        ["fit", "d.csv", "-t", "t", "-w", "w", "--threshold", "1", "--bins", "3"],
                        ["fit", "d.csv", "-e", "--bins", "2", "-w", "w"]):
            expected = self.run_program(*command)
            closed = [] if ON_WINDOWS else [{"preexec_fn": lambda: os.close(2)}]
            with open("/dev/full", "wb") as full:
                for options in ({"stderr": full}, *closed):
                    result = subprocess.run([MCBIN, *command], stdout=subprocess.PIPE, check=False,
                                            cwd=self.directory, env=self.environment, **options)
                    self.assertEqual(result.stdout.decode(), expected.stdout)
                    self.assertEqual(result.returncode, expected.returncode)

    def test_the_model_alone_goes_to_standard_output(self):
        model = self.succeed(*FIT, "--json").stdout
        self.assertEqual(self.succeed(*FIT, "-o", "-").stdout, model)
        self.assertEqual(self.succeed(*FIT, "-o", "-", "--json").stdout, model)
        self.assertFalse((self.directory / "-").exists())

    def test_a_model_comes_from_standard_input(self):
        model = self.succeed(*FIT, "-o", "m.json").stdout
        model = (self.directory / "m.json").read_bytes()
        self.file("-", "no model")
        for command in (["show", "MODEL"], ["export", "MODEL", "--to", "sql"],
                        ["report", "MODEL"], ["apply", "MODEL", str(LOANS)],
                        ["score", "MODEL", str(LOANS)]):
            from_file = self.succeed(*(a.replace("MODEL", "m.json") for a in command))
            from_input = self.succeed(*(a.replace("MODEL", "-") for a in command), stdin=model)
            self.assertEqual(from_input.stdout, from_file.stdout)
        self.fail_with(1, "standard input: the model has no \"format\"", "show", "-", stdin="{}")

    def test_a_failed_run_leaves_the_older_model(self):
        self.file("model.json", "old")
        self.run_program("fit", LOANS, "-t", "nope", "-o", "model.json")
        self.assertEqual((self.directory / "model.json").read_text(), "old")
        self.assertEqual(sorted(p.name for p in self.directory.iterdir()), ["model.json", "tmp"])

    @unittest.skipIf(ON_WINDOWS, "what runs the program needs it, too")
    def test_temporary_files_need_a_directory(self):
        self.environment["TMPDIR"] = "/nonexistent"
        self.fail_with(
            1,
            "cannot make a temporary directory in /nonexistent: No such file or directory",
            *FIT,
        )
        self.fail_with(
            1, "cannot make a temporary file in /nonexistent: No such file or directory",
            "fit", "-", "-e", stdin="a\n1\n",
        )


class Interrupts(ProgramTest):
    """Signals; on Windows the one that stands for Ctrl-C."""

    def interrupt(self, process, number, code):
        stdout, stderr, answer = self.signal(process, number)
        self.assertEqual((stdout, answer), (b"", code))
        self.assertTrue(stderr.endswith(b"mcbin: interrupted\n"), stderr)
        self.assertEqual(self.left(), [])

    @repeated_when_lost
    def test_while_waiting_for_standard_input(self):
        process = self.start("fit", "-", "-e", stdin=subprocess.PIPE)
        process.stdin.write(b"a\n1\n")
        process.stdin.flush()
        time.sleep(STARTED)
        self.assertEqual(self.signal(process, signal.SIGINT), (b"", b"mcbin: interrupted\n", 130))
        self.assertEqual(self.left(), [])

    @unittest.skipIf(ON_WINDOWS, "it has no such signal")
    def test_while_nobody_reads_what_is_written(self):
        """Into a pipe that is full and one that has no reader, however the signal falls."""
        self.succeed("fit", LOANS, "-e", "--bins", "100", "-o", self.directory / "m.json")
        page = self.succeed("report", self.directory / "m.json").stdout
        self.assertGreater(len(page), 1 << 16)  # what a pipe holds
        os.mkfifo(self.directory / "pipe")
        for output in ("-", self.directory / "pipe"):
            for delay in (0.5, *(0.002 * turn for turn in range(20))):
                process = self.start("report", self.directory / "m.json", "-o", output)
                time.sleep(delay)
                process.send_signal(signal.SIGTERM)
                sent = time.monotonic()
                code = process.wait(timeout=10)
                self.assertLess(time.monotonic() - sent, 1.0)
                if delay == 0.5 or code != -signal.SIGTERM:  # before main() begins nothing is heard
                    self.assertEqual(code, 143)
                    self.assertEqual(process.stderr.read(), b"mcbin: interrupted\n")
                process.stdout.close()
                process.stderr.close()

    @repeated_when_lost
    def test_while_a_huge_model_is_read(self):
        model = self.fit(LOANS, "-e")
        attribute = model["attributes"][0]
        model["attributes"] = [dict(attribute, name=str(i)) for i in range(60_000)]
        self.file("m.json", json.dumps(model))
        for delay in (0.3, 0.6, 0.9):
            process = self.start("show", self.directory / "m.json")
            time.sleep(STARTED - 0.3 + delay)
            sent = time.monotonic()
            self.interrupt(process, signal.SIGINT, 130)
            self.assertLess(time.monotonic() - sent, 5.0 if ON_WINDOWS else 1.0)

    def big_file(self):
        path = self.directory / "big.csv"
        header, body = LOANS.read_text().split("\n", 1)
        with open(path, "w", encoding="utf-8") as file:
            file.write(header + "\n")
            for _ in range(150):
                file.write(body)
        return str(path)

    @repeated_when_lost
    def test_at_any_moment(self):
        path = self.big_file()
        command = ["fit", path, "-t", "default", "-o", str(self.directory / "m.json")]
        for number, code in ((signal.SIGINT, 130), (signal.SIGTERM, 143))[:1 if ON_WINDOWS else 2]:
            process = self.start(*command)
            time.sleep(STARTED - 0.2)
            self.interrupt(process, number, code)
        # The library's files are there once it reads cases: wait for them, then stop.
        process = self.start(*command)
        deadline = time.monotonic() + 60
        while not list(self.temporary.glob("mcbin-*/*")) and time.monotonic() < deadline:
            time.sleep(0.005)
        self.interrupt(process, signal.SIGINT, 130)
        self.assertEqual(sorted(p.name for p in self.directory.iterdir()), ["big.csv", "tmp"])


@unittest.skipIf(ON_WINDOWS, "a console is no terminal that a test could hold the other end of")
class Terminal(ProgramTest):
    def on_terminal(self, *arguments, **variables):
        """Standard error of a run whose standard error is a terminal."""
        master, terminal = pty.openpty()
        environment = dict(self.environment, TERM="xterm", **variables)
        with subprocess.Popen([MCBIN, *arguments], stderr=terminal, stdout=subprocess.DEVNULL,
                              env=environment) as process:
            os.close(terminal)
            seen = b""
            while True:
                try:
                    chunk = os.read(master, 65536)
                except OSError:
                    break
                if not chunk:
                    break
                seen += chunk
            process.wait(timeout=300)
        os.close(master)
        return seen.decode()

    def test_progress_shows_on_a_terminal_and_is_wiped(self):
        path = Interrupts.big_file(self)
        seen = self.on_terminal("fit", path, "-t", "default")
        self.assertRegex(seen, r"\rlooking at the columns  \[#*-*\] +\d+%  \d+ cases/s")
        self.assertRegex(seen, r"\rreading cases  \[#*-*\] +\d+%  \d+ cases/s  .* left")
        self.assertRegex(seen, r"\r\x1b\[K")

    def test_errors_are_coloured_unless_no_color_is_set(self):
        self.environment.pop("NO_COLOR", None)
        self.assertIn("\x1b[31mmcbin:\x1b[0m", self.on_terminal("fit", "nope.csv", "-e"))
        self.assertNotIn("\x1b", self.on_terminal("fit", "nope.csv", "-e", NO_COLOR="1"))

    def test_nothing_is_drawn_into_a_file(self):
        path = Interrupts.big_file(self)
        result = self.succeed("fit", path, "-t", "default")
        self.assertNotIn("\x1b", result.stderr)
        self.assertNotIn("\r", result.stderr)


if __name__ == "__main__":
    unittest.main()
