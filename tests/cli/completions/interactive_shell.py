"""Shells on a pseudo-terminal that complete the text typed into them.

There are no delays: after its keys, a test types a key that is bound to a report, and the shell processes keys in order.
If a shell does not answer within DEADLINE seconds, the test fails.
"""

import fcntl
import os
import pathlib
import pty
import re
import select
import signal
import struct
import termios
import time

DEADLINE = 20

REPORT = "\x18l"  # Ctrl-X l sends the line to the pipe $REPORTS
ALL = "\x18a"  # Ctrl-X a: bash and zsh put all candidates on the line; fish sends them to the pipe
CLEAR = "\x18k"  # Ctrl-X k
MARK = "\u00b6"

# Sequences that move the cursor, set colors or name the window.
ESCAPES = re.compile(r"\x1b(\[[0-9;?>=]*[a-zA-Z]|\][^\x07\x1b]*(\x07|\x1b\\)|[()][A-Z0-9]|[=>])")


def _without_option(text, candidates):
    """The set of the candidates for the last word of text. For "--to=hex", only the value, if text has a "="."""
    option = re.match(r"(?:.* )?([^ =]*=)?", text).group(1) or ""
    return {candidate.removeprefix(option) for candidate in candidates}


class InteractiveShell:
    """A shell in its own folder, without the configuration of the user or of the system."""

    command = []

    def __init__(self, home, box):
        """Starts the shell in the folder box. home contains its configuration."""
        self.output = bytearray()
        self.reports = bytearray()
        pipe = pathlib.Path(home, "reports")
        os.mkfifo(pipe)
        self.pipe = os.open(pipe, os.O_RDWR | os.O_NONBLOCK)
        environment = {
            "HOME": str(home),
            "LC_ALL": "C.UTF-8",
            "PATH": os.path.dirname(os.environ["KVRMEM"]) + os.pathsep + os.environ["PATH"],
            "REPORTS": str(pipe),
            "TERM": "xterm",
        }
        self.set_up(home)
        self.process, self.terminal = pty.fork()
        if self.process == 0:
            try:
                os.chdir(box)
                os.execvpe(self.command[0], self.command, environment)
            finally:
                os._exit(127)
        fcntl.ioctl(self.terminal, termios.TIOCSWINSZ, struct.pack("HHHH", 60, 160, 0, 0))

    def set_up(self, home):
        """Writes the files that the shell reads at its start."""
        raise NotImplementedError

    def close(self):
        os.close(self.terminal)
        os.close(self.pipe)
        os.kill(self.process, signal.SIGKILL)
        os.waitpid(self.process, 0)

    def completed(self, text):
        """The line after text and a Tab."""
        return self._line_after(text + "\t")

    def shown(self, text):
        """The words that appear on the terminal after text and two Tabs."""
        self._line_after("")
        self.output.clear()
        self._line_after(text + "\t\t")
        # The report uses another channel than the output and may arrive first.
        os.write(self.terminal, MARK.encode())
        self._wait_until(lambda: MARK.encode() in self.output, f"does not show {MARK!r} after {text!r}")
        self._line_after("")
        return ESCAPES.sub(" ", self.output.decode("utf-8", "replace")).split()

    def offered(self, text):
        """The set of the candidates for the last word of text, or for the value in it."""
        line = self._line_after(text + ALL)
        if line == text:
            return set()
        words = re.match(r".* ", text).group()
        assert line.startswith(words), f"{text!r} became {line!r}"
        return _without_option(text, line[len(words) :].split())

    def _line_after(self, keys):
        self._wait_until(self._reads_keys, f"reads no keys before {keys!r}")
        os.write(self.terminal, (keys + REPORT).encode())
        line = self._report(keys)
        self._wait_until(self._reads_keys, f"reads no keys after {keys!r}")
        os.write(self.terminal, CLEAR.encode())
        return line

    def _report(self, keys):
        self._wait_until(lambda: b"\0" in self.reports, f"does not answer {keys!r}")
        report, _, rest = self.reports.partition(b"\0")
        self.reports = rest
        return report.decode()

    def _reads_keys(self):
        """True if a line editor has switched off the line editing of the terminal."""
        return not termios.tcgetattr(self.terminal)[3] & termios.ICANON

    def _wait_until(self, condition, failure):
        deadline = time.monotonic() + DEADLINE
        while not condition():
            if time.monotonic() > deadline:
                raise AssertionError(f"{self.command[0]} {failure}; it wrote {bytes(self.output)!r}")
            ready, _, _ = select.select([self.terminal, self.pipe], [], [], 0.01)
            if self.pipe in ready:
                self.reports += os.read(self.pipe, 65536)
            if self.terminal in ready:
                try:
                    self.output += os.read(self.terminal, 65536)
                except OSError as error:  # the shell has ended
                    raise AssertionError(f"{self.command[0]} has ended; it wrote {bytes(self.output)!r}") from error


class Bash(InteractiveShell):
    def set_up(self, home):
        file = pathlib.Path(home, "setup.bash")
        file.write_text(
            r"""
PS1='$ '
bind 'set bell-style none'
bind 'set enable-bracketed-paste off'
bind -x '"\C-xl": printf "%s\0" "$READLINE_LINE" >"$REPORTS"'
bind '"\C-xa": insert-completions'
bind '"\C-xk": kill-whole-line'
source <(kvrmem --generate bash)
"""
        )
        self.command = ["bash", "--noprofile", "--rcfile", str(file), "-i"]


class BashWithoutBreaks(Bash):
    """COMP_WORDBREAKS as some users set it: "=" and ":" are parts of words."""

    def set_up(self, home):
        super().set_up(home)
        with open(self.command[3], "a", encoding="utf-8") as file:
            file.write("COMP_WORDBREAKS=${COMP_WORDBREAKS//[=:]/}\n")


class Zsh(InteractiveShell):
    """With the completion as a file in the function path, in the same way as an installed one."""

    before_compinit = 'mkdir "$HOME/functions"; kvrmem --generate zsh >"$HOME/functions/_kvrmem"; fpath+=("$HOME/functions")'
    after_compinit = ""

    def set_up(self, home):
        pathlib.Path(home, ".zshrc").write_text(
            rf"""
PS1='$ '
bindkey -e
unset zle_bracketed_paste
LISTMAX=0
{self.before_compinit}
autoload -Uz compinit
compinit -u -d "$HOME/dump"
{self.after_compinit}
report() {{ printf '%s\0' "$BUFFER" >"$REPORTS"; }}
insert_all() {{ _main_complete; compstate[insert]=all; }}
zle -N report
zle -C insert-all complete-word insert_all
bindkey '^Xl' report
bindkey '^Xa' insert-all
bindkey '^Xk' kill-whole-line
"""
        )
        self.command = ["zsh", "--no-global-rcs", "-i"]


class ZshThatSources(Zsh):
    before_compinit = ""
    after_compinit = "source <(kvrmem --generate zsh)"


class Fish(InteractiveShell):
    def set_up(self, home):
        file = pathlib.Path(home, "setup.fish")
        file.write_text(
            r"""
set -g fish_greeting
set -g fish_autosuggestion_enabled 0
function fish_prompt
    printf '$ '
end
kvrmem --generate fish | source
bind \cxl 'printf "%s\0" (commandline | string collect) >$REPORTS'
bind \cxa 'printf "%s\0" (complete -C (commandline -c) | string collect) >$REPORTS'
bind \cxk 'commandline ""'
"""
        )
        self.command = ["fish", "--no-config", "--interactive", "--init-command", f"source {file}"]

    def offered(self, text):
        candidates = self._line_after(text + ALL)
        self._report(text)
        return _without_option(text, [line.split("\t")[0] for line in candidates.splitlines()])
