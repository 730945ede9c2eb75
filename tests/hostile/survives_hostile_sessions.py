#!/usr/bin/env python3
"""survives_hostile_sessions.py TOOL HOSTILE_FILES FOLDER: hostile texts and messages for the language server.

Each server has limited memory and time. It must answer every request with a result or with an error of the protocol.
Its exit code must be 0 after "shutdown", or 1 if the stream allows nothing else.
"""

import json
import pathlib
import resource
import shutil
import subprocess
import sys

MEBIBYTE = 1 << 20
ADDRESSES = 256 * MEBIBYTE
PROCESSOR_SECONDS = 10
WALL_SECONDS = 60  # shared with other programs
KNOWN_ERRORS = {-32700, -32600, -32601, -32602, -32002, -32800, -32803}
TEXTS = {".mif", ".hex", ".rif", ".vmem", ".memb", ".coe", ".srec", ".ihx", ".txt", ".csv", ".logisim", ".mem"}
FAR = 1_000_000_000
# The commands get the whole texts; a session reads its text several times.
MOST_CHARACTERS = 8_000


def framed(content):
    body = content if isinstance(content, bytes) else json.dumps(content).encode()
    return b"Content-Length: %d\r\n\r\n" % len(body) + body


def limit_resources():
    resource.setrlimit(resource.RLIMIT_AS, (ADDRESSES, ADDRESSES))
    resource.setrlimit(resource.RLIMIT_CPU, (PROCESSOR_SECONDS, PROCESSOR_SECONDS))


def messages_in(stream):
    """The messages in the complete output of a server."""
    while stream:
        head, _, rest = stream.partition(b"\r\n\r\n")
        length = int(head.removeprefix(b"Content-Length: "))
        yield json.loads(rest[:length])
        stream = rest[length:]


class Session:
    """The messages of a client, which are sent at once, and the required answers."""

    def __init__(self):
        self.stream = bytearray()
        self.asked = 0
        self.request("initialize", {"processId": None, "rootUri": None, "capabilities": {}})
        self.notify("initialized", {})

    def request(self, method, params):
        self.asked += 1
        self.stream += framed({"jsonrpc": "2.0", "id": self.asked, "method": method, "params": params})

    def notify(self, method, params):
        self.stream += framed({"jsonrpc": "2.0", "method": method, "params": params})

    def open(self, uri, text):
        document = {"uri": uri, "languageId": "memory", "version": 1, "text": text}
        self.notify("textDocument/didOpen", {"textDocument": document})

    def change(self, uri, version, start, end, text):
        self.notify(
            "textDocument/didChange",
            {
                "textDocument": {"uri": uri, "version": version},
                "contentChanges": [{"range": {"start": position(*start), "end": position(*end)}, "text": text}],
            },
        )

    def ask_everything(self, uri, place):
        document = {"uri": uri}
        whole = {"start": position(0, 0), "end": position(FAR, 0)}
        self.request("textDocument/hover", {"textDocument": document, "position": place})
        self.request("textDocument/definition", {"textDocument": document, "position": place})
        self.request("textDocument/foldingRange", {"textDocument": document})
        self.request("textDocument/documentSymbol", {"textDocument": document})
        self.request("textDocument/semanticTokens/full", {"textDocument": document})
        self.request("textDocument/inlayHint", {"textDocument": document, "range": whole})
        context = {"diagnostics": []}
        self.request("textDocument/codeAction", {"textDocument": document, "range": whole, "context": context})

    def finish(self):
        self.request("shutdown", None)
        self.stream += framed({"jsonrpc": "2.0", "method": "exit"})

    def faults(self, tool, expected_code=0):
        """The fault in the server's part of the session; None if there is none."""
        try:
            done = subprocess.run(
                [tool, "lsp"],
                input=bytes(self.stream),
                capture_output=True,
                timeout=WALL_SECONDS,
                preexec_fn=limit_resources,
            )
        except subprocess.TimeoutExpired:
            return "it does not end"
        if done.returncode != expected_code:
            return f"exit code {done.returncode}: {done.stderr[:500]!r}"
        return self.faults_of_answers(list(messages_in(done.stdout)), expected_code)

    def faults_of_answers(self, messages, code):
        answers = [each for each in messages if "method" not in each and each["id"] is not None]
        for each in answers + [each for each in messages if "error" in each]:
            if "error" in each and each["error"]["code"] not in KNOWN_ERRORS:
                return f"an error that no client knows: {each}"
        ids = sorted(each["id"] for each in answers)
        if code == 0 and ids != list(range(1, self.asked + 1)):
            return f"answered {ids}, asked 1 to {self.asked}"
        return None


def position(line, character):
    return {"line": line, "character": character}


def session_with_text(name, text):
    """Opens a text, cut to its two ends if it is long. Sends requests, changes the middle of the text and sends them
    again."""
    if len(text) > MOST_CHARACTERS:
        text = text[: MOST_CHARACTERS // 2] + text[-MOST_CHARACTERS // 2 :]
    lines = text.split("\n")
    middle = len(lines) // 2
    character = len(lines[middle]) // 2
    uri = "file:///" + name
    session = Session()
    session.open(uri, text)
    session.ask_everything(uri, position(middle, character))
    session.change(uri, 2, (middle, character), (middle, character + 1), "\n0 : 5G;\n")
    session.ask_everything(uri, position(middle + 1, 5))
    session.request("textDocument/formatting", {"textDocument": {"uri": uri}, "options": {"tabSize": 4}})
    session.finish()
    return session


SMALL = "WIDTH=8;\nDEPTH=4;\nCONTENT BEGIN\n0 : 1;\nEND;\n"


def raw(stream, ends=False):
    """A session in which a client sends these bytes."""
    session = Session()
    session.stream += stream
    if not ends:
        session.finish()
    return session


def far_positions():
    session = Session()
    session.open("file:///a.mif", SMALL)
    for place in ((FAR, FAR), (2**31 - 1, 2**31 - 1), (2**63, 2**63), (0, 2**64 - 1)):
        session.ask_everything("file:///a.mif", position(*place))
    for version, place in enumerate(((FAR, 0), (0, FAR), (2**31 - 1, 2**31 - 1), (2**64 - 1, 2**64 - 1)), 2):
        session.change("file:///a.mif", version, place, place, "1")
        session.change("file:///a.mif", version, (3, 4), place, "2;\n")
        session.change("file:///a.mif", version, place, (0, 0), "3")
    session.finish()
    return session


def many_opened():
    """Opens documents without closing them, some of them twice."""
    session = Session()
    for number in range(1000):
        session.open(f"file:///{number % 700}.mif", SMALL)
    session.finish()
    return session


def many_changes():
    session = Session()
    session.open("file:///a.mif", SMALL)
    for version in range(1000):
        session.change("file:///a.mif", version, (3, 4), (3, 5), "1 " * (version % 5))
    session.ask_everything("file:///a.mif", position(3, 4))
    session.finish()
    return session


def deep_request(depth):
    nested = b"[" * depth + b"]" * depth
    return framed(b'{"jsonrpc":"2.0","method":"workspace/unknown","params":' + nested + b"}")


# A name, the session, and the expected exit code.
SESSIONS = [
    ("positions beyond the text", far_positions, 0),
    ("documents without end", many_opened, 0),
    ("changes without end", many_changes, 0),
    ("a change of nothing", lambda: raw(framed(b'{"jsonrpc":"2.0","method":"textDocument/didChange"}')), 0),
    ("deep nesting", lambda: raw(deep_request(100_000)), 0),
    ("deeper nesting", lambda: raw(deep_request(1_000_000)), 0),
    ("brackets that are never closed", lambda: raw(framed(b"[" * 1_000_000)), 0),
    ("objects that are never closed", lambda: raw(framed(b'{"a":' * 200_000)), 0),
    ("a million values", lambda: raw(framed(b"[" + b"1," * 1_100_000 + b"1]")), 0),
    ("a number of many digits", lambda: raw(framed(b'{"jsonrpc":"2.0","id":' + b"9" * 1_000_000 + b"}")), 0),
    ("no UTF-8", lambda: raw(framed(b'{"jsonrpc":"2.0","method":"\xff\xfe"}')), 0),
    ("NUL bytes", lambda: raw(framed(bytes(1_000_000))), 0),
    ("a length that is too small", lambda: raw(b'Content-Length: 5\r\n\r\n{"jsonrpc":"2.0"}', ends=True), 1),
    ("a length that is too large", lambda: raw(b"Content-Length: 1000\r\n\r\n{}", ends=True), 1),
    ("a length that is negative", lambda: raw(b"Content-Length: -5\r\n\r\n"), 0),
    ("a length that is no number", lambda: raw(b"Content-Length: 0x10\r\n\r\n"), 0),
    ("two lengths", lambda: raw(b"Content-Length: 2\r\nContent-Length: 4\r\n\r\nnull", ends=True), 1),
    ("a length beyond the memory", lambda: raw(b"Content-Length: 4000000000\r\n\r\n{}", ends=True), 1),
    ("a length beyond all", lambda: raw(b"Content-Length: 18446744073709551615\r\n\r\n{}", ends=True), 1),
    ("a length of too many digits", lambda: raw(b"Content-Length: " + b"9" * 3000 + b"\r\n\r\n{}", ends=True), 1),
    ("a header without end", lambda: raw(b"X-Y: " + b"z" * 20_000_000, ends=True), 1),
    ("headers without end", lambda: raw(b"X-Y: z\r\n" * 2_000_000, ends=True), 1),
    ("no header", lambda: raw(b"\r\n\r\n" * 1000), 0),
    ("bytes of nothing", lambda: raw(bytes(range(256)) * 10_000, ends=True), 1),
]


def main(tool, hostile_files, folder):
    work = pathlib.Path(folder) / "sessions"
    shutil.rmtree(work, ignore_errors=True)
    work.mkdir(parents=True)
    subprocess.run([hostile_files, work, "single"], check=True)
    found = []
    sessions = 0
    for path in sorted((work / "single").iterdir()):
        if path.suffix in TEXTS:
            sessions += 1
            text = path.read_bytes().decode("utf-8", "replace")
            found.append((path.name, session_with_text(path.name, text).faults(tool)))
    for name, make, code in SESSIONS:
        sessions += 1
        found.append((name, make().faults(tool, code)))
    shutil.rmtree(work)
    faults = [(name, fault) for name, fault in found if fault is not None]
    for name, fault in faults:
        print(f"{name}: {fault}")
    used = resource.getrusage(resource.RUSAGE_CHILDREN)
    print(f"{sessions} sessions, {len(faults)} faults, {used.ru_utime + used.ru_stime:.1f} s, "
          f"{used.ru_maxrss // 1024} MiB at most")
    return 0 if sessions > 100 and not faults else 1


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
