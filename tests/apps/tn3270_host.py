"""tn3270_host.py FILE: a TN3270 host on the loopback interface, whose only screen has two
fields; what Enter sends is appended to FILE, the fields parted by a tab. Writes its port to
the standard output."""

import socket
import sys

IAC, DONT, DO, WONT, WILL, SB, SE, EOR = 255, 254, 253, 252, 251, 250, 240, 239
BINARY, TERMINAL_TYPE, END_OF_RECORD = 0, 24, 25
CODE_PAGE = "cp037"
WIDTH = 80
ENTER = 0x7D
SBA, SF, IC = 0x11, 0x1D, 0x13
CODES = bytes.fromhex(
    "40c1c2c3c4c5c6c7c8c94a4b4c4d4e4f50d1d2d3d4d5d6d7d8d95a5b5c5d5e5f"
    "6061e2e3e4e5e6e7e8e96a6b6c6d6e6ff0f1f2f3f4f5f6f7f8f97a7b7c7d7e7f")
# The positions of the two fields' attributes: each field begins behind its own.
FIELDS = (2 * WIDTH, 4 * WIDTH)


def address(position):
    return bytes((CODES[position >> 6], CODES[position & 63]))


def screen():
    data = bytes((0xF5, 0xC3))  # Erase/Write; keyboard unlocked, modified tags reset
    for number, position in enumerate(FIELDS):
        data += bytes((SBA,)) + address(position) + bytes((SF, 0x40))
        if number == 0:
            data += bytes((IC,))
    data += bytes((SBA,)) + address(6 * WIDTH) + bytes((SF, 0x60))
    return data.replace(b"\xff", b"\xff\xff") + bytes((IAC, EOR))


def fields(record):
    """The texts of the fields in a record, empty where one was not touched."""
    texts = dict.fromkeys(FIELDS, b"")
    at = 3
    while at < len(record):
        assert record[at] == SBA
        high, low = (code & 63 for code in record[at + 1:at + 3])
        end = record.find(bytes((SBA,)), at + 3)
        end = len(record) if end < 0 else end
        texts[(high << 6 | low) - 1] = record[at + 3:end]
        at = end
    return [texts[position].decode(CODE_PAGE) for position in FIELDS]


class Session:
    def __init__(self, connection):
        self.input = connection.makefile("rb")
        self.send = connection.sendall

    def run(self, file):
        self.send(bytes((IAC, DO, TERMINAL_TYPE)))
        record = bytearray()
        while byte := self.input.read(1):
            if byte[0] != IAC:
                record += byte
                continue
            command = self.input.read(1)[0]
            if command == IAC:
                record.append(IAC)
            elif command == EOR:
                if record[0] == ENTER:
                    file.write("\t".join(fields(record)).rstrip("\t") + "\n")
                    file.flush()
                self.send(screen())
                record.clear()
            elif command == SB:
                while self.input.read(1) != bytes((SE,)):
                    pass
                for option in (END_OF_RECORD, BINARY):
                    self.send(bytes((IAC, DO, option, IAC, WILL, option)))
                self.send(screen())
            else:
                option = self.input.read(1)[0]
                if command == WILL and option == TERMINAL_TYPE:
                    self.send(bytes((IAC, SB, TERMINAL_TYPE, 1, IAC, SE)))


with socket.create_server(("127.0.0.1", 0)) as server:
    print(server.getsockname()[1], flush=True)
    with server.accept()[0] as connection, open(sys.argv[1], "w", encoding="utf-8") as output:
        Session(connection).run(output)
