#!/usr/bin/env python3
"""A bridge between Kelvora and a terminal on a serial device: bridge.py DEVICE PORT

Kelvora then reaches the terminal with --line 1=bridge:localhost:PORT. An example to start from: lines.md beside
it says what a bridge has to do.
"""
import binascii
import os
import random
import select
import socket
import sys
import termios
import threading
import tty

TAGS = {b"M": b"\xa7m", b"E": b"\xa7e", b"R": b"\xa7r"}


def frame(exchange, body):
    text = b"%04X" % exchange + body
    return b"\x01" + text + b"\x03%04X" % binascii.crc_hqx(text, 0xFFFF)


def ask(line, exchange, command):
    """The body of the terminal's answer; nothing when none comes."""
    for _ in range(3):
        os.write(line, frame(exchange, command))
        heard = b""
        while select.select([line], [], [], 2)[0]:
            heard += os.read(line, 1024)
            start, end = heard.rfind(b"\x01"), heard.rfind(b"\x03")
            body = heard[start + 5:end]
            if 0 <= start < end and heard[start:] == frame(exchange, body):
                return body
    return b""


def serve(client, line, in_use):
    with client:
        if not in_use.acquire(blocking=False):
            return  # hanging up at once says "in use"
        with client.makefile("rb") as commands:
            exchange = random.randrange(0x10000)
            try:
                for command in commands:
                    exchange = (exchange + 1) % 0x10000
                    body = ask(line, exchange, command.rstrip(b"\r\n"))
                    client.sendall(TAGS.get(body[:1], b"\xa7t") + body[1:] + b"\n")
            except OSError as error:
                print(error, file=sys.stderr)
        in_use.release()


def main(device, port):
    line = os.open(device, os.O_RDWR | os.O_NOCTTY)
    tty.setraw(line)
    settings = termios.tcgetattr(line)
    settings[4] = settings[5] = termios.B9600
    termios.tcsetattr(line, termios.TCSANOW, settings)
    in_use = threading.Lock()
    with socket.create_server(("localhost", int(port))) as server:
        while True:
            threading.Thread(target=serve, args=(server.accept()[0], line, in_use), daemon=True).start()


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__.splitlines()[0])
    main(*sys.argv[1:])
