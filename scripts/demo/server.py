#!/usr/bin/env python3
"""The offline sample video service: serves the files of one folder over HTTP
on 127.0.0.1, the way the downloader tool fetches media, with no network.

    server.py --root FOLDER [--port N] [--port-file FILE] [--pid-file FILE]
              [--throttle BYTES_PER_SECOND] [--lifetime SECONDS]
              [--exit-with-parent] [--all-missing] [--log FILE]

GET and HEAD of /media/NAME answer with the file NAME of the root folder,
byte ranges included (the tool asks for ranges and resumes with them). Every
other path, and every path under --all-missing, answers 404, which is how a
format whose address has gone away is imitated.

The throttle spreads each answer over time so that a download of a few
megabytes takes a few seconds and its progress shows several steps.

The server listens on 127.0.0.1 only. It writes its process id to the PID
file and its port to the port file once it listens, and stops on SIGTERM or
SIGINT, after --lifetime seconds, or, with --exit-with-parent, as soon as the
process that started it is gone: a test that crashes cannot leave it behind.
Only the Python standard library is used.
"""

import argparse
import http.server
import os
import re
import signal
import socket
import sys
import threading
import time

CHUNK = 16 * 1024


def write_atomically(path, text):
    """Readers poll these files: they must never see half of one."""
    partial = f"{path}.{os.getpid()}.partial"
    with open(partial, "w", encoding="ascii") as handle:
        handle.write(text)
    os.replace(partial, path)


class Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"
    server_version = "KestrelSampleService/1"

    # Set on the class by main().
    root = "."
    throttle = 0
    all_missing = False
    log_handle = None

    def log_message(self, format, *args):  # noqa: A002 - the base class's name
        if self.log_handle is not None:
            self.log_handle.write("%s %s\n" % (self.log_date_time_string(), format % args))
            self.log_handle.flush()

    def do_HEAD(self):
        self.answer(send_body=False)

    def do_GET(self):
        self.answer(send_body=True)

    def not_found(self):
        body = b"not found\n"
        self.send_response(404)
        self.send_header("Content-Type", "text/plain")
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        if self.command != "HEAD":
            self.wfile.write(body)

    def media_path(self):
        path = self.path.split("?", 1)[0]
        if self.all_missing or not path.startswith("/media/"):
            return None
        name = path[len("/media/"):]
        # One plain file name: nothing outside the root folder is served.
        if not name or "/" in name or name.startswith("."):
            return None
        full = os.path.join(self.root, name)
        return full if os.path.isfile(full) else None

    def answer(self, send_body):
        full = self.media_path()
        if full is None:
            self.not_found()
            return
        size = os.path.getsize(full)
        start, end = 0, size - 1
        status = 200
        requested = self.headers.get("Range")
        if requested:
            match = re.fullmatch(r"\s*bytes=(\d*)-(\d*)\s*", requested)
            if not match or (match.group(1) == "" and match.group(2) == ""):
                self.send_error(416)
                return
            if match.group(1) == "":
                # The last N bytes.
                start = max(0, size - int(match.group(2)))
            else:
                start = int(match.group(1))
                if match.group(2) != "":
                    end = min(end, int(match.group(2)))
            if start >= size or start > end:
                self.send_response(416)
                self.send_header("Content-Range", f"bytes */{size}")
                self.send_header("Content-Length", "0")
                self.end_headers()
                return
            status = 206
        length = end - start + 1

        self.send_response(status)
        content_type = "audio/mp4" if full.endswith(".m4a") else "video/mp4"
        self.send_header("Content-Type", content_type)
        self.send_header("Accept-Ranges", "bytes")
        self.send_header("Content-Length", str(length))
        if status == 206:
            self.send_header("Content-Range", f"bytes {start}-{end}/{size}")
        self.end_headers()
        if not send_body:
            return

        with open(full, "rb") as media:
            media.seek(start)
            sent = 0
            began = time.monotonic()
            # Smaller pieces at low rates, so that the flow stays even.
            piece = CHUNK if not self.throttle else max(1024, min(CHUNK, self.throttle // 20))
            while sent < length:
                data = media.read(min(piece, length - sent))
                if not data:
                    break
                try:
                    self.wfile.write(data)
                except (BrokenPipeError, ConnectionResetError):
                    return
                sent += len(data)
                if self.throttle:
                    ahead = sent / self.throttle - (time.monotonic() - began)
                    if ahead > 0:
                        time.sleep(ahead)


class Server(http.server.ThreadingHTTPServer):
    # Answers in progress must not keep a stopping server alive.
    daemon_threads = True
    allow_reuse_address = True

    def handle_error(self, request, client_address):
        # A client that hangs up mid-answer is normal here (a cancelled
        # download); anything else is worth a line in the log.
        error = sys.exc_info()[1]
        if isinstance(error, (BrokenPipeError, ConnectionResetError, socket.timeout)):
            return
        super().handle_error(request, client_address)


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    parser.add_argument("--root", required=True, help="folder whose files are served under /media/")
    parser.add_argument("--port", type=int, default=0, help="port on 127.0.0.1 (default: any free one)")
    parser.add_argument("--port-file", help="file that receives the port once the server listens")
    parser.add_argument("--pid-file", help="file that receives the process id")
    parser.add_argument("--throttle", type=int, default=0, help="bytes per second for each answer (0: no limit)")
    parser.add_argument("--lifetime", type=float, default=3600.0, help="seconds after which the server stops")
    parser.add_argument("--exit-with-parent", action="store_true", help="stop when the starting process is gone")
    parser.add_argument("--all-missing", action="store_true", help="answer 404 to every request")
    parser.add_argument("--log", help="request log file (default: standard error)")
    options = parser.parse_args()

    Handler.root = os.path.abspath(options.root)
    Handler.throttle = max(0, options.throttle)
    Handler.all_missing = options.all_missing
    Handler.log_handle = open(options.log, "a", encoding="utf-8") if options.log else sys.stderr

    parent = os.getppid()
    stop = threading.Event()
    signal.signal(signal.SIGTERM, lambda *_: stop.set())
    signal.signal(signal.SIGINT, lambda *_: stop.set())

    server = Server(("127.0.0.1", options.port), Handler)
    port = server.server_address[1]
    if options.pid_file:
        write_atomically(options.pid_file, f"{os.getpid()}\n")
    worker = threading.Thread(target=server.serve_forever, kwargs={"poll_interval": 0.2}, daemon=True)
    worker.start()
    # Written last: a reader that sees the port can connect.
    if options.port_file:
        write_atomically(options.port_file, f"{port}\n")
    print(f"serving {Handler.root} on http://127.0.0.1:{port}/media/ (pid {os.getpid()})", flush=True)

    deadline = time.monotonic() + options.lifetime
    while not stop.wait(0.25):
        if time.monotonic() >= deadline:
            print("lifetime over, stopping", flush=True)
            break
        if options.exit_with_parent and os.getppid() != parent:
            print("the starting process is gone, stopping", flush=True)
            break

    server.shutdown()
    server.server_close()
    for path in (options.pid_file, options.port_file):
        if path:
            try:
                os.remove(path)
            except FileNotFoundError:
                pass
    return 0


if __name__ == "__main__":
    sys.exit(main())
