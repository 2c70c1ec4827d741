"""A mail server on a loopback port, for tests: smtp_server.py FOLDER MODE.

What it takes it writes into FOLDER as an independent program reads it: the raw message, the headers, and the attachment
decoded. MODE is "accept"; "starttls" (the same with encryption offered, under a certificate of its own making); a reply
such as "rcpt 450 4.2.1 later" or "data 550 5.7.1 no"; "silent" (it stops answering at RCPT); or "login" (it takes only
user "caja" with password "correcta").
"""
import asyncio
import email
import email.policy
import logging
import os
import ssl
import subprocess
import sys
import warnings

from aiosmtpd.smtp import SMTP, AuthResult

logging.disable()
warnings.simplefilter("ignore")  # among them: a login without encryption, which is meant here
folder, mode = sys.argv[1], sys.argv[2]


def write(name, content):
    with open(os.path.join(folder, name), "wb") as file:
        file.write(content)


class Handler:
    async def handle_RCPT(self, server, session, envelope, address, options):
        if mode == "silent":
            await asyncio.sleep(3600)
        if mode.startswith("rcpt "):
            return mode[5:]
        envelope.rcpt_tos.append(address)
        return "250 OK"

    async def handle_DATA(self, server, session, envelope):
        if mode.startswith("data "):
            return mode[5:]
        message = email.message_from_bytes(envelope.original_content, policy=email.policy.default)
        attachment = next(message.iter_attachments())
        write("encrypted", str(session.ssl is not None).encode())
        write("raw", envelope.original_content)
        write("attachment", attachment.get_payload(decode=True))
        write("name", attachment.get_filename().encode())
        write("body", message.get_body().get_content().encode())
        write("envelope", f"{envelope.mail_from} {' '.join(envelope.rcpt_tos)}".encode())
        for name in ("From", "To", "Subject", "Date", "Message-ID"):
            write(name, "|".join(str(value) for value in message.get_all(name)).encode())
        return "250 OK"


def authenticate(server, session, envelope, mechanism, data):
    return AuthResult(success=data.login == b"caja" and data.password == b"correcta", handled=False)


def own_certificate():
    key, certificate = os.path.join(folder, "key"), os.path.join(folder, "certificate")
    subprocess.run(["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2", "-subj", "/CN=127.0.0.1",
                    "-keyout", key, "-out", certificate], check=True, capture_output=True, timeout=30)
    context = ssl.create_default_context(ssl.Purpose.CLIENT_AUTH)
    context.load_cert_chain(certificate, key)
    return context


async def serve():
    encryption = {"tls_context": own_certificate()} if mode == "starttls" else {}
    login = {"authenticator": authenticate, "auth_require_tls": False, "auth_required": True} if mode == "login" else {}
    loop = asyncio.get_running_loop()
    server = await loop.create_server(lambda: SMTP(Handler(), hostname="prueba", **login, **encryption), "127.0.0.1", 0)
    print(server.sockets[0].getsockname()[1], flush=True)
    await server.serve_forever()


asyncio.run(serve())
