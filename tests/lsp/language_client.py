"""A client of a language server for tests: it starts the program and communicates with it by the protocol."""

import array
import fcntl
import json
import subprocess
import termios
import time


def framed(content):
    """The bytes of a message."""
    body = content if isinstance(content, bytes) else json.dumps(content).encode()
    return b"Content-Length: %d\r\n\r\n" % len(body) + body


class LanguageClient:
    """A server process and the messages that it has sent."""

    def __init__(self, program, *options):
        self.process = subprocess.Popen(
            [program, "lsp", *options], stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.PIPE
        )
        self.last_id = 0
        self.received = []  # read while waiting for another message

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.kill()
        self.process.communicate()

    def send(self, *messages):
        """Sends messages in one write."""
        self.process.stdin.write(b"".join(framed(each) for each in messages))
        self.process.stdin.flush()

    def wait_until_received(self):
        """Waits until the server has read all sent bytes, at most 10 seconds."""
        waiting = array.array("i", [1])
        for _ in range(1000):
            fcntl.ioctl(self.process.stdin.fileno(), termios.FIONREAD, waiting)
            if waiting[0] == 0:
                return
            time.sleep(0.01)
        raise TimeoutError("the server does not read")

    def read(self):
        """The next message; None at the end."""
        length = None
        while True:
            line = self.process.stdout.readline()
            if not line:
                return None
            if line == b"\r\n":
                break
            name, value = line.split(b":")
            if name.lower() == b"content-length":
                length = int(value)
        return json.loads(self.process.stdout.read(length))

    def wait_for(self, is_it):
        """The first message for which is_it returns true."""
        for index, message in enumerate(self.received):
            if is_it(message):
                return self.received.pop(index)
        while True:
            message = self.read()
            assert message is not None, "the server has ended"
            if is_it(message):
                return message
            self.received.append(message)

    def request(self, method, params=None):
        """The answer to a request, with its result or error."""
        self.last_id += 1
        content = {"jsonrpc": "2.0", "id": self.last_id, "method": method}
        if params is not None:
            content["params"] = params
        self.send(content)
        return self.wait_for(lambda message: message.get("id") == self.last_id and "method" not in message)

    def result(self, method, params=None):
        """The result of a request that succeeds."""
        answer = self.request(method, params)
        assert "result" in answer, answer
        return answer["result"]

    def notify(self, method, params):
        self.send({"jsonrpc": "2.0", "method": method, "params": params})

    def initialize(self, options=None, capabilities=None):
        params = {"processId": None, "rootUri": None, "capabilities": capabilities or {}}
        if options is not None:
            params["initializationOptions"] = options
        result = self.result("initialize", params)
        self.notify("initialized", {})
        return result

    def open(self, uri, text, version=1):
        self.notify(
            "textDocument/didOpen",
            {"textDocument": {"uri": uri, "languageId": "memory", "version": version, "text": text}},
        )

    def diagnostics(self, uri):
        """The diagnostics that are published next for the document."""
        return self.wait_for(
            lambda message: message.get("method") == "textDocument/publishDiagnostics"
            and message["params"]["uri"] == uri
        )["params"]["diagnostics"]

    def finish(self):
        """Ends the session according to the protocol and returns the exit code."""
        self.result("shutdown")
        self.send({"jsonrpc": "2.0", "method": "exit"})
        return self.process.wait(timeout=10)
