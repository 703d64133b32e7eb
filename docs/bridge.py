#!/usr/bin/env python3
"""A bridge between Kelvora and a terminal on a serial device: bridge.py DEVICE PORT

Kelvora then reaches the terminal with --line 1=bridge:localhost:PORT. An example to start from: lines.md beside
it says what a bridge has to do. It needs the package python3-serial.
"""
import binascii
import random
import socketserver
import sys
import threading

import serial

TAGS = {b"M": b"\xa7m", b"E": b"\xa7e", b"R": b"\xa7r"}


def frame(exchange, body):
    text = b"%04X" % exchange + body
    return b"\x01" + text + b"\x03%04X" % binascii.crc_hqx(text, 0xFFFF)


def ask(exchange, command):
    """The body of the terminal's answer; nothing when none comes."""
    for _ in range(3):
        line.reset_input_buffer()
        line.write(frame(exchange, command))
        heard = line.read_until(b"\x03") + line.read(4)
        body = heard[heard.rfind(b"\x01") + 5:-5]
        if heard.endswith(frame(exchange, body)):
            return body
    return b""


class Client(socketserver.StreamRequestHandler):
    def handle(self):
        if in_use.acquire(blocking=False):  # who comes second is hung up on
            try:
                for exchange, command in enumerate(self.rfile, random.randrange(0x8000)):
                    body = ask(exchange, command.rstrip(b"\r\n"))
                    self.wfile.write(TAGS.get(body[:1], b"\xa7t") + body[1:] + b"\n")
            finally:
                in_use.release()


if len(sys.argv) != 3:
    sys.exit(__doc__.splitlines()[0])
socketserver.ThreadingTCPServer.daemon_threads = socketserver.ThreadingTCPServer.allow_reuse_address = True
in_use = threading.Lock()
with serial.Serial(sys.argv[1], 9600, timeout=3) as line:
    with socketserver.ThreadingTCPServer(("localhost", int(sys.argv[2])), Client) as server:
        server.serve_forever()
