"""HTTPS on the loopback address under any host name: certificates, a server, and a proxy that tunnels to it."""

import http.server
import socket
import socketserver
import ssl
import threading

import trustme

LOOPBACK = "127.0.0.1"


def context_for(authority: trustme.CA, host: str, **options) -> ssl.SSLContext:
    """What a server shows as its certificate for `host`; `options` are those of trustme's issue_cert."""
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    authority.issue_cert(host, **options).configure_cert(context)
    return context


class HttpsServer(http.server.ThreadingHTTPServer):
    """Answers on a port of its own choice, or on `port`. A handshake that fails ends that connection alone."""

    daemon_threads = True
    request_queue_size = 256

    def __init__(self, handler, context: ssl.SSLContext, port: int = 0):
        super().__init__((LOOPBACK, port), handler)
        self.context = context

    def finish_request(self, request, client_address):
        try:
            with self.context.wrap_socket(request, server_side=True) as secured:
                super().finish_request(secured, client_address)
        except OSError:
            pass  # the client does not trust the certificate, or has gone

    def handle_error(self, request, client_address):
        pass


class TunnelHandler(socketserver.StreamRequestHandler):
    def handle(self):
        method, target, *_ = self.rfile.readline().decode("latin-1").split() or ("", "")
        while self.rfile.readline().strip():
            pass  # the header
        if method != "CONNECT" or target.rpartition(":")[0] != self.server.host:
            self.wfile.write(b"HTTP/1.1 403 Forbidden\r\nContent-Length: 0\r\n\r\n")
            return
        with socket.create_connection((LOOPBACK, self.server.target_port)) as target_socket:
            self.wfile.write(b"HTTP/1.1 200 Connection established\r\n\r\n")
            back = threading.Thread(target=pump, args=(target_socket, self.connection), daemon=True)
            back.start()
            pump(self.connection, target_socket)
            back.join()


def pump(source: socket.socket, target: socket.socket):
    """Hands on what `source` sends until it ends."""
    try:
        while data := source.recv(65536):
            target.sendall(data)
    except OSError:
        pass
    try:
        target.shutdown(socket.SHUT_WR)
    except OSError:
        pass


class Tunnel(socketserver.ThreadingTCPServer):
    """An HTTP proxy that leads every connection to `host`, and no other, to a port of this machine."""

    daemon_threads = True
    allow_reuse_address = True
    request_queue_size = 256

    def __init__(self, host: str, target_port: int, port: int = 0):
        super().__init__((LOOPBACK, port), TunnelHandler)
        self.host = host
        self.target_port = target_port

    def handle_error(self, request, client_address):
        pass  # a client that has gone


def start(server: socketserver.BaseServer) -> int:
    """Serves in a thread of its own, and returns the port."""
    threading.Thread(target=server.serve_forever, daemon=True).start()
    return server.server_address[1]
