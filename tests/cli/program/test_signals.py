"""Ordinary ending signals at random times: heard at once, cleaned up after, and said in the code."""

import os
import random
import signal
import subprocess
import time
import unittest

from program import MCBIN, ProgramTest

SEED = int(os.environ.get("MCB_SEED", "20261122"))
TIMES = 200 if os.environ.get("MCB_FULL_SWEEP") == "1" else 60
SIGNALS = [
    signal.SIGHUP, signal.SIGINT, signal.SIGQUIT, signal.SIGTERM, signal.SIGPIPE,
    signal.SIGXCPU, signal.SIGXFSZ, signal.SIGUSR1, signal.SIGALRM,
]
OLD = b"what was there before\n"
ROWS = 60_000


class Signals(ProgramTest):
    def setUp(self):
        super().setUp()
        draw = random.Random(SEED)
        rows = [f"{draw.random()},{draw.randrange(1000)},{draw.choice('ab')}\n" for _ in range(ROWS)]
        self.file("d.csv", "x,y,t\n" + "".join(rows))
        self.succeed("fit", "d.csv", "--target", "t", "-o", "model.json")
        self.kept = {path.name for path in self.directory.iterdir()} | {"out"}

    def start(self, arguments, number):
        # A signal that the parent ignores would be ignored here too.
        def heard():
            signal.signal(number, signal.SIG_DFL)

        return subprocess.Popen(
            [MCBIN, *arguments], cwd=self.directory, env=self.environment, preexec_fn=heard,
            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE,
        )

    def await_handler(self, program, number):
        """Until main() has begun the signal's own action would be taken."""
        status = f"/proc/{program.pid}/status"
        deadline = time.monotonic() + 30
        while program.poll() is None and time.monotonic() < deadline:
            with open(status, encoding="ascii") as file:
                caught = next((line for line in file if line.startswith("SigCgt:")), "SigCgt: 0")
            if int(caught.split()[1], 16) >> (number - 1) & 1:
                return
            time.sleep(0.0005)

    def undisturbed(self, arguments):
        begin = time.monotonic()
        self.succeed(*arguments)
        return (self.directory / "out").read_bytes(), time.monotonic() - begin

    def judge(self, arguments, number, delay, whole):
        out = self.directory / "out"
        out.write_bytes(OLD)
        program = self.start(arguments, number)
        self.await_handler(program, number)
        time.sleep(delay)
        program.send_signal(number)
        sent = time.monotonic()
        errors = program.communicate(timeout=60)[1].decode()
        waited = time.monotonic() - sent
        where = f"{signal.Signals(number).name} after {delay:.3f} s: {program.returncode}\n{errors}"
        self.assertIn(program.returncode, [0, 128 + number], where)
        self.assertIn(out.read_bytes(), [whole] if program.returncode == 0 else [OLD, whole], where)
        self.assertLess(waited, 5.0, where)
        self.assertEqual({path.name for path in self.directory.iterdir()} - self.kept, set(), where)
        self.assertEqual(list(self.temporary.iterdir()), [], where)
        return program.returncode

    def test_random_times(self):
        draw = random.Random(SEED)
        commands = [
            ["fit", "d.csv", "--target", "t", "-o", "out"],
            ["apply", "model.json", "d.csv", "-o", "out"],
        ]
        print(f"seed {SEED}")
        for arguments in commands:
            whole, duration = self.undisturbed(arguments)
            stopped = 0
            for turn in range(TIMES // len(commands)):
                number = SIGNALS[turn % len(SIGNALS)]
                with self.subTest(command=arguments[0], turn=turn):
                    stopped += self.judge(arguments, number, draw.uniform(0.0, duration), whole) != 0
            print(f"signals: {arguments[0]}: {stopped} of {TIMES // len(commands)} runs stopped")
            self.assertGreater(stopped, 0)


if __name__ == "__main__":
    unittest.main(verbosity=0)
