#!/usr/bin/env python3
"""Drives ctellimg on a pseudo-terminal, as a person at a terminal (or a Windows console,
under Wine) would: passwords typed without echo, the confirmation, the progress bar, and
Ctrl+C during a creation.

    ctellimg_terminal.py SCRATCH_DIRECTORY COMMAND...

COMMAND is how to start ctellimg (the native executable, or the Wine runner and the .exe).
"""
import fcntl
import os
import pty
import select
import signal
import subprocess
import shutil
import sys
import tempfile
import termios
import time

scratch = tempfile.mkdtemp(prefix="terminal-", dir=sys.argv[1])
command = sys.argv[2:]
failures = []


def check(condition, what, session=None):
    print(("ok   " if condition else "FAIL ") + what)
    if not condition:
        failures.append(what)
        if session is not None:
            print("     the terminal showed: %r" % session.output[-400:])


class Session:
    """One ctellimg run whose standard input, output and error are a terminal."""

    def __init__(self, *args):
        self.master, slave = pty.openpty()
        self.process = subprocess.Popen(command + list(args), stdin=slave, stdout=slave,
                                        stderr=slave, preexec_fn=self._take_terminal)
        os.close(slave)
        self.output = b""

    @staticmethod
    def _take_terminal():
        """Makes the terminal the child's controlling terminal, so that the interrupt
        character on it raises SIGINT in the child's process group."""
        os.setsid()
        fcntl.ioctl(0, termios.TIOCSCTTY, 0)

    def read_until(self, text, seconds=60):
        """Collects output until `text` shows; False if it does not within the time."""
        deadline = time.monotonic() + seconds
        while text.encode() not in self.output:
            left = deadline - time.monotonic()
            if left <= 0 or not self._read(left):
                return False
        return True

    def type(self, text):
        os.write(self.master, text.encode())

    def interrupt(self):
        """Ctrl+C as the terminal sends it: the interrupt character on the line."""
        self.type("\x03")

    def finish(self, seconds=120):
        deadline = time.monotonic() + seconds
        while self.process.poll() is None and time.monotonic() < deadline:
            self._read(0.2)
        if self.process.poll() is None:
            os.killpg(self.process.pid, signal.SIGKILL)
            self.process.wait()
            return None
        while self._read(0.2):
            pass
        os.close(self.master)
        return self.process.returncode

    def _read(self, seconds):
        ready, _, _ = select.select([self.master], [], [], seconds)
        if not ready:
            return False
        try:
            chunk = os.read(self.master, 65536)
        except OSError:  # the other side has closed
            return False
        self.output += chunk
        return bool(chunk)


def shown(output):
    """What the terminal showed, with its line ends (CR LF) read as plain line ends."""
    return output.replace(b"\r\n", b"\n").decode()


def piped(stdin_text, *args):
    result = subprocess.run(command + list(args), input=stdin_text.encode(),
                            capture_output=True, timeout=120)
    return result.returncode


image = os.path.join(scratch, "typed.qvi")
password = "Typed-Secret-7"

# Create: the password is asked twice and never echoed.
session = Session("create", image, "--capacity", "64 MB")
check(session.read_until("New password:"), "create asks for the password")
session.type(password + "\r")
check(session.read_until("Confirm password:"), "create asks for the confirmation")
session.type(password + "\r")
status = session.finish()
check(status == 0, "create ends with 0 (was %r)" % status)
check(password.encode() not in session.output, "the typed password is not echoed")
check(piped(password + "\n", "show", image) == 0, "the typed password opens the image")

# A confirmation that differs: nothing is made.
other = os.path.join(scratch, "mismatch.qvi")
session = Session("create", other, "--capacity", "64 MB")
session.read_until("New password:")
session.type(password + "\r")
session.read_until("Confirm password:")
session.type(password + "x\r")
status = session.finish()
check(status == 1, "a differing confirmation ends with 1 (was %r)" % status)
check(shown(session.output) == "New password: \nConfirm password: \n"
      "Passwords mismatch! Please re-type your password.\n",
      "and says exactly that the passwords differ", session)
check(not os.path.exists(other), "and leaves no file")

# Passwd on the terminal: old, then new twice.
session = Session("passwd", image)
session.read_until("Password:")
session.type(password + "\r")
check(session.read_until("New password:"), "passwd asks for the new password", session)
session.type("New-Secret-8\r")
session.read_until("Confirm password:")
session.type("New-Secret-8\r")
status = session.finish()
check(status == 0, "passwd ends with 0 (was %r)" % status, session)
check(piped("New-Secret-8\n", "show", image) == 0, "the new password opens the image")

# Ctrl+C while a large fixed image is being made: cancelled, nothing left behind. (Small
# enough that a creation that ignored Ctrl+C would still end on an ordinary disk.)
big = os.path.join(scratch, "interrupted.qvi")
session = Session("create", big, "--capacity", "8 GB", "--fixed")
session.read_until("New password:")
session.type(password + "\r")
session.read_until("Confirm password:")
session.type(password + "\r")
check(session.read_until("%", 120), "a progress bar is drawn on the terminal")
session.interrupt()
status = session.finish()
check(status == 1, "Ctrl+C ends the creation with 1 (was %r)" % status)
# Behind the last state of the progress bar: the terminal's echo of Ctrl+C, then the report.
after_bar = shown(session.output).rpartition("%")[2]
if after_bar.startswith("^C"):
    after_bar = after_bar[2:]
check(after_bar == "\nCreation cancelled; nothing was left on disk.\nError code: 40050008\n",
      "and says exactly that it was cancelled, with the code 40050008", session)
check(not any(name.startswith("interrupted") for name in os.listdir(scratch)),
      "and leaves no volume file")

shutil.rmtree(scratch)
if failures:
    print("%d terminal checks failed" % len(failures))
    sys.exit(1)
print("all terminal checks passed")
