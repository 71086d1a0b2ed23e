#!/usr/bin/env python3
"""A release feed on 127.0.0.1 for the launcher's install tests.

Serves the files of a folder by name. Writes the port it listens on into
PORT_FILE once it is ready and appends "GET <name>" for every request to
LOG_FILE. How a file is served is read, at each request, from
"<folder>/.behaviour" (one "<name> <how>" per line):

  truncate   announces the whole length, sends half of it, and closes
  slow       sends the body in 64 KiB pieces, a tenth of a second apart
  throttled  sends the body at 2 MB/s, 200 kB a tenth of a second (an ordinary line)
  trickle    sends the body one byte a second
  fail       answers 503 Service Unavailable

Stops by itself after an hour, and when killed.

  feedserver.py FOLDER PORT_FILE LOG_FILE
"""

import http.server
import os
import sys
import threading
import time


def behaviours(folder):
    table = {}
    try:
        with open(os.path.join(folder, ".behaviour"), encoding="utf-8") as lines:
            for line in lines:
                parts = line.split()
                if len(parts) == 2:
                    table[parts[0]] = parts[1]
    except FileNotFoundError:
        pass
    return table


def make_handler(folder, log_path):
    class Handler(http.server.BaseHTTPRequestHandler):
        protocol_version = "HTTP/1.1"

        def log_message(self, *args):
            pass

        def do_GET(self):
            name = self.path.lstrip("/")
            with open(log_path, "a", encoding="utf-8") as log:
                log.write("GET %s\n" % name)
            path = os.path.join(folder, name)
            if "/" in name or name.startswith(".") or not os.path.isfile(path):
                self.send_response(404)
                self.send_header("Content-Length", "0")
                self.send_header("Connection", "close")
                self.end_headers()
                return
            with open(path, "rb") as source:
                body = source.read()
            how = behaviours(folder).get(name, "")
            if how == "fail":
                self.send_response(503)
                self.send_header("Content-Length", "0")
                self.send_header("Connection", "close")
                self.end_headers()
                return
            self.send_response(200)
            self.send_header("Content-Type", "application/octet-stream")
            self.send_header("Content-Length", str(len(body)))
            self.send_header("Connection", "close")
            self.end_headers()
            try:
                if how == "truncate":
                    self.wfile.write(body[: len(body) // 2])
                elif how in ("slow", "throttled"):
                    piece = 65536 if how == "slow" else 200000
                    for start in range(0, len(body), piece):
                        self.wfile.write(body[start : start + piece])
                        self.wfile.flush()
                        time.sleep(0.1)
                elif how == "trickle":
                    for start in range(len(body)):
                        self.wfile.write(body[start : start + 1])
                        self.wfile.flush()
                        time.sleep(1)
                else:
                    self.wfile.write(body)
            except (BrokenPipeError, ConnectionResetError):
                pass
            self.close_connection = True

    return Handler


def main():
    folder, port_file, log_path = sys.argv[1:4]
    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), make_handler(folder, log_path))
    server.daemon_threads = True
    timer = threading.Timer(3600, server.shutdown)
    timer.daemon = True
    timer.start()
    with open(port_file + ".new", "w", encoding="utf-8") as out:
        out.write(str(server.server_address[1]))
    os.rename(port_file + ".new", port_file)
    server.serve_forever()


if __name__ == "__main__":
    main()
