#!/usr/bin/env python3
"""program_test.py KVRMEM: sessions with the language server through pipes, as a client runs it."""

import subprocess
import sys
import unittest

from language_client import LanguageClient, framed

KVRMEM = sys.argv.pop(1)
URI = "file:///work/boot.mif"
TEXT = "WIDTH=8;\nDEPTH=2;\nCONTENT BEGIN\n0 : 1F;\n1 : 20\nEND;\n"


def change(version, line, character, text):
    place = {"line": line, "character": character}
    return {
        "jsonrpc": "2.0",
        "method": "textDocument/didChange",
        "params": {
            "textDocument": {"uri": URI, "version": version},
            "contentChanges": [{"range": {"start": place, "end": place}, "text": text}],
        },
    }


def run(stream, *options):
    """The exit code and the output of a server that receives these bytes and then the end of its input."""
    done = subprocess.run([KVRMEM, "lsp", *options], input=stream, capture_output=True, timeout=20)
    return done.returncode, done.stdout


class Program(unittest.TestCase):
    def send_while_the_server_waits(self, client, *messages):
        """Sends messages while the server is blocked, because its answer does not fit into the pipe."""
        client.open("file:///large.mem", "A5\n5A\n" * 10_000)
        document = {"textDocument": {"uri": "file:///large.mem"}}
        client.send({"jsonrpc": "2.0", "id": "large", "method": "textDocument/semanticTokens/full", "params": document})
        client.send(*messages)
        client.wait_until_received()
        answer = client.wait_for(lambda message: message.get("id") == "large")
        self.assertGreater(len(answer["result"]["data"]), 50_000)

    def test_session(self):
        with LanguageClient(KVRMEM) as client:
            self.assertEqual(client.initialize()["serverInfo"]["name"], "kvrmem")
            client.open(URI, TEXT)
            self.assertEqual([each["code"] for each in client.diagnostics(URI)], ["missing-semicolon"])
            client.send(change(2, 4, 6, ";"))
            self.assertEqual(client.diagnostics(URI), [])
            place = {"textDocument": {"uri": URI}, "position": {"line": 3, "character": 5}}
            self.assertIn("hex        1F", client.result("textDocument/hover", place)["contents"]["value"])
            self.assertEqual(client.finish(), 0)

    def test_changes_that_wait_are_checked_once(self):
        with LanguageClient(KVRMEM) as client:
            client.initialize()
            client.open(URI, TEXT)
            client.diagnostics(URI)
            self.send_while_the_server_waits(client, *(change(version, 0, 0, "%%") for version in range(2, 200)))
            self.assertEqual(len(client.diagnostics(URI)), 1)
            client.result("textDocument/foldingRange", {"textDocument": {"uri": URI}})
            self.assertLess(len(client.received), 20)

    def test_cancelled_request(self):
        with LanguageClient(KVRMEM) as client:
            client.initialize()
            client.send(
                {"jsonrpc": "2.0", "id": "slow", "method": "workspace/symbol", "params": {"query": "1"}},
                {"jsonrpc": "2.0", "method": "$/cancelRequest", "params": {"id": "slow"}},
            )
            answer = client.wait_for(lambda message: message.get("id") == "slow")
            self.assertEqual(answer["error"]["code"], -32800)

    def test_request_is_cancelled_while_others_are_worked_on(self):
        with LanguageClient(KVRMEM) as client:
            client.initialize()
            self.send_while_the_server_waits(
                client,
                {"jsonrpc": "2.0", "id": "late", "method": "workspace/symbol", "params": {"query": "1"}},
                {"jsonrpc": "2.0", "method": "$/cancelRequest", "params": {"id": "late"}},
            )
            answer = client.wait_for(lambda message: message.get("id") == "late")
            self.assertEqual(answer["error"]["code"], -32800)

    def test_length_without_an_end_ends_the_session(self):
        shutdown = framed({"jsonrpc": "2.0", "id": 2, "method": "shutdown"})
        code, output = run(b"Content-Length: 18446744073709551615\r\n\r\n" + shutdown)
        self.assertEqual(code, 1)
        self.assertIn(b"the session ends", output)

    def test_options_hold_for_all_files(self):
        with LanguageClient(KVRMEM, "--width", "16", "--radix", "fixed:8.8") as client:
            client.initialize()
            client.open("file:///a.mem", "180\n")
            place = {"textDocument": {"uri": "file:///a.mem"}, "position": {"line": 0, "character": 0}}
            self.assertIn("fixed:8.8  1.5", client.result("textDocument/hover", place)["contents"]["value"])

    def test_bad_json_is_answered_and_survived(self):
        with LanguageClient(KVRMEM) as client:
            client.process.stdin.write(b"Content-Length: x\r\n\r\n" + framed(b"{") + framed(b"[]"))
            client.process.stdin.flush()
            codes = [client.read()["error"]["code"] for _ in range(3)]
            self.assertEqual(codes, [-32700, -32700, -32600])
            self.assertEqual(client.request("shutdown")["error"]["code"], -32002)
            client.initialize()
            self.assertEqual(client.finish(), 0)

    def test_exit_codes(self):
        self.assertEqual(run(b"")[0], 1)
        self.assertEqual(run(framed({"jsonrpc": "2.0", "method": "exit"}))[0], 1)
        initialize = {"jsonrpc": "2.0", "id": 1, "method": "initialize", "params": {}}
        shutdown = {"jsonrpc": "2.0", "id": 2, "method": "shutdown"}
        self.assertEqual(run(framed(initialize) + framed(shutdown))[0], 0)
        self.assertEqual(run(b"", "operand")[0], 4)

    def test_output_that_cannot_be_written(self):
        with open("/dev/full", "wb") as full:
            done = subprocess.run(
                [KVRMEM, "lsp"], input=framed(b"{"), stdout=full, stderr=subprocess.PIPE, timeout=20
            )
        self.assertEqual(done.returncode, 3)
        self.assertIn(b"standard output: cannot be written", done.stderr)


if __name__ == "__main__":
    unittest.main()
