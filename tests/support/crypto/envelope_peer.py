#!/usr/bin/env python3
"""Seals and opens message envelopes with another implementation, one line in and one line out.

    key PRIVATE                 takes that private key from now on: "ok"
    make pkcs1|pkcs8            makes a key pair and takes it: "PRIVATE PUBLIC"
    open NONCE SEALED WRAPPED   "TEXT", or "refused"
    seal TEXT                   "NONCE SEALED WRAPPED", with a fresh content key

All words in capitals are Base64; a text is UTF-8 inside, "-" if it is empty.
"""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT

import base64
import os
import sys

from cryptography.exceptions import InvalidTag
from cryptography.hazmat.primitives import hashes, serialization
from cryptography.hazmat.primitives.asymmetric import padding, rsa
from cryptography.hazmat.primitives.ciphers.aead import AESGCM

OAEP = padding.OAEP(mgf=padding.MGF1(hashes.SHA256()), algorithm=hashes.SHA256(), label=None)
DER = serialization.Encoding.DER
FORMATS = {"pkcs1": serialization.PrivateFormat.TraditionalOpenSSL, "pkcs8": serialization.PrivateFormat.PKCS8}


def encoded(data):
    return base64.b64encode(data).decode() or "-"


def decoded(word):
    return b"" if word == "-" else base64.b64decode(word, validate=True)


class Peer:
    def __init__(self):
        self.private = None

    def key(self, word):
        self.private = serialization.load_der_private_key(decoded(word), password=None)
        return "ok"

    def make(self, form):
        self.private = rsa.generate_private_key(public_exponent=65537, key_size=2048)
        private = self.private.private_bytes(DER, FORMATS[form], serialization.NoEncryption())
        public = self.private.public_key().public_bytes(DER, serialization.PublicFormat.SubjectPublicKeyInfo)
        return f"{encoded(private)} {encoded(public)}"

    def open(self, nonce, sealed, wrapped):
        try:
            content_key = self.private.decrypt(decoded(wrapped), OAEP)
            return encoded(AESGCM(content_key).decrypt(decoded(nonce), decoded(sealed), None))
        except (InvalidTag, ValueError):
            return "refused"

    def seal(self, text):
        content_key, nonce = AESGCM.generate_key(256), os.urandom(12)
        sealed = AESGCM(content_key).encrypt(nonce, decoded(text), None)
        wrapped = self.private.public_key().encrypt(content_key, OAEP)
        return f"{encoded(nonce)} {encoded(sealed)} {encoded(wrapped)}"


def main():
    peer = Peer()
    for line in sys.stdin:
        command, *words = line.split()
        print(getattr(peer, command)(*words), flush=True)


if __name__ == "__main__":
    main()
