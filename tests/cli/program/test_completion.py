"""The shells complete the program's command lines by the scripts that it prints for them."""

import os
import pty
import re
import select
import subprocess
import time
import unittest

from program import ProgramTest

# Control-T completes the line and prints it.
ZSH = """
    PS1=; stty -echo; autoload -Uz compinit; compinit -u -D; source ./mcbin.zsh
    show() { zle complete-word; print -r -- "<<$BUFFER>>"; BUFFER= }; zle -N show
    bindkey '^T' show; print REA'DY'
"""


class Completion(ProgramTest):
    # The last word of each line is to be completed; then what it is completed to.
    CASES = [
        (["fi"], ["fit"]),
        (["help", "sh"], ["show"]),
        (["completion", "z"], ["zsh"]),
        (["apply", "--as", "in"], ["index", "interval"]),
        (["fit", "--weight-r"], ["--weight-rounding"]),
        (["fit", "--weight-rounding", ""], ["round", "truncate"]),
        (["fit", "--qui"], ["--quiet"]),
        (["fit", "loans.csv", "--min-bin-s"], ["--min-bin-share"]),
    ]

    def setUp(self):
        super().setUp()
        for shell in ("bash", "zsh", "fish"):
            self.file(f"mcbin.{shell}", self.succeed("completion", shell).stdout)
        self.file("loans.csv", "a\n1\n")

    def shell(self, *command):
        return subprocess.run(command, cwd=self.directory, env=self.environment, text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=True,
                              timeout=60).stdout

    def bash(self, words):
        quoted = " ".join(f"'{word}'" for word in ["mcbin", *words])
        return self.shell("bash", "-c", f"""
            compopt() {{ mapfile -t COMPREPLY < <(compgen -f -- "$current"); }}
            source mcbin.bash
            COMP_WORDS=({quoted}); COMP_CWORD={len(words)}; _mcbin
            printf '%s\\n' "${{COMPREPLY[@]}}" """).split()

    def fish(self, words):
        line = " ".join(["mcbin", *words])
        found = self.shell("fish", "--no-config", "-c", f"source mcbin.fish; complete -C '{line}'")
        return [entry.split("\t")[0] for entry in found.splitlines()]

    def zsh(self, lines):
        """The lines after they were completed on a terminal."""
        process, terminal = pty.fork()
        if process == 0:
            os.chdir(self.directory)
            os.execvpe("zsh", ["zsh", "-f", "-i"], self.environment | {"TERM": "dumb"})
        try:
            os.write(terminal, "; ".join(ZSH.split("\n")[1:-1]).encode() + b"\n")
            self.read(terminal, b"READY")
            for line in lines:
                os.write(terminal, line.encode() + b"\x14")
                yield re.search(b"<<(.*)>>", self.read(terminal, b">>"))[1].decode()
        finally:
            os.close(terminal)
            os.waitpid(process, 0)

    def read(self, terminal, end):
        text = b""
        deadline = time.monotonic() + 60
        while end not in text and time.monotonic() < deadline:
            if select.select([terminal], [], [], 1)[0]:
                text += os.read(terminal, 4096)
        self.assertIn(end, text)
        return text

    def test_bash(self):
        for words, expected in self.CASES:
            self.assertEqual(sorted(self.bash(words)), expected, words)
        self.assertEqual(self.bash(["apply", "--as", "=", "wo"]), ["woe"])
        self.assertEqual(self.bash(["fit", "loa"]), ["loans.csv"])
        self.assertEqual(self.bash(["fit", "--output", "loa"]), ["loans.csv"])
        self.assertEqual(self.bash(["fit", "--target", "loa"]), [])

    def test_fish(self):
        for words, expected in self.CASES:
            self.assertEqual(sorted(self.fish(words)), expected, words)
        self.assertEqual(self.fish(["fit", "loa"]), ["loans.csv"])
        self.assertEqual(self.fish(["fit", "--output", "loa"]), ["loans.csv"])
        self.assertEqual(self.fish(["fit", "--target", "loa"]), [])

    def test_zsh(self):
        cases = {"mcbin fi": "mcbin fit ",
                 "mcbin help sh": "mcbin help show ",
                 "mcbin completion z": "mcbin completion zsh ",
                 "mcbin apply --as inte": "mcbin apply --as interval ",
                 "mcbin fit --weight-r": "mcbin fit --weight-rounding=",
                 "mcbin fit loa": "mcbin fit loans.csv ",
                 "mcbin fit --output loa": "mcbin fit --output loans.csv ",
                 "mcbin fit --target loa": "mcbin fit --target loa"}
        self.assertEqual(list(self.zsh(cases)), list(cases.values()))


if __name__ == "__main__":
    unittest.main()
