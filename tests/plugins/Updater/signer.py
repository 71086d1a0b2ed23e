#!/usr/bin/env python3
"""Signs the updater tests' release feeds for test programs that cannot run
gpg themselves (the Windows build under Wine).

Makes two throw-away keys in a private GnuPG home, one that stands in for
the application's release key and one of a stranger, and serves on
127.0.0.1:

  GET  /release.asc      the stand-in release key, ASCII-armoured
  POST /sign/release     a detached binary signature of the body
  POST /sign/stranger    the same, by the stranger's key

Writes the port it listens on into PORT_FILE once the keys are made.
Stops by itself after an hour, and when killed.

  signer.py HOME PORT_FILE
"""

import http.server
import os
import subprocess
import sys
import threading

USERS = {
    "release": "Kestrel Test Release <release@example.invalid>",
    "stranger": "Kestrel Test Stranger <stranger@example.invalid>",
}


def gpg(home, *arguments, data=None):
    command = ["gpg", "--homedir", home, "--batch", "--yes", "--passphrase", "",
               "--pinentry-mode", "loopback", *arguments]
    return subprocess.run(command, input=data, capture_output=True, check=True, timeout=60).stdout


def make_handler(home, armoured):
    class Handler(http.server.BaseHTTPRequestHandler):
        protocol_version = "HTTP/1.1"

        def answer(self, status, body):
            self.send_response(status)
            self.send_header("Content-Length", str(len(body)))
            self.end_headers()
            self.wfile.write(body)

        def do_GET(self):
            if self.path == "/release.asc":
                self.answer(200, armoured)
            else:
                self.answer(404, b"")

        def do_POST(self):
            length = int(self.headers.get("Content-Length", "0"))
            document = self.rfile.read(length)
            user = USERS.get(self.path[len("/sign/"):]) if self.path.startswith("/sign/") else None
            if user is None:
                self.answer(404, b"")
                return
            self.answer(200, gpg(home, "--local-user", user, "--detach-sign", "--output", "-", data=document))

        def log_message(self, *arguments):
            pass

    return Handler


def main():
    home, port_file = sys.argv[1], sys.argv[2]
    os.makedirs(home, mode=0o700, exist_ok=True)
    for user in USERS.values():
        gpg(home, "--quick-gen-key", user, "ed25519", "sign", "never")
    armoured = gpg(home, "--armor", "--export", USERS["release"])
    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), make_handler(home, armoured))
    threading.Timer(3600, server.shutdown).start()
    with open(port_file + ".new", "w", encoding="utf-8") as out:
        out.write(str(server.server_address[1]))
    os.rename(port_file + ".new", port_file)
    server.serve_forever()


if __name__ == "__main__":
    main()
