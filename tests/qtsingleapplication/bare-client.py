"""Hands a text to the process behind a local socket, and prints what that answers."""

import socket
import struct
import sys

path, text = sys.argv[1:]
message = text.encode()
with socket.socket(socket.AF_UNIX) as server:
    server.settimeout(30)
    server.connect(path)
    server.sendall(struct.pack(">I", len(message)) + message)
    answer = b""
    while len(answer) < 3:
        more = server.recv(3 - len(answer))
        if not more:
            break
        answer += more
print(answer.decode())
