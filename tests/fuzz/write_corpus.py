#!/usr/bin/env python3
"""Writes the inputs that fuzzing begins with: corpus/TARGET/NAME for every name below.

What the fuzzers find themselves is kept beside them under the SHA-1 of its content.
"""
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT

import base64
import json
import pathlib
import re

FOLDER = pathlib.Path(__file__).resolve().parent
HOSTILE = {
    "markup": "<img src=\"/dev/zero\"><a href=\"https://example.org\">x</a>",
    "placeholders": "%1 %2 %99 %L1",
    "nul": "before\0after",
    "directions": "\u202eevil\u2066\u200b\u0301\u0301",
    "emoji": "\U0001f512\U0001f468\u200d\U0001f469\u200d\U0001f467",
    "lines": "\n" * 300 + "\r\n\u2028",
    "long": "w" * 5000,
    "bom": "\ufefftext\ufeff",
    "sharp": "\u00df\u0130\u01c5",
}
LONE = '[{"from":"\\ud800","peer":"\\udc00a","text":"\\ud83d","username":"\\ud83d\\ud83d","groupId":"\\udfff"}]'
TIMES = ["2026-03-29T02:30:00", "2026-03-29T01:30:00.5Z", "2026-03-28T23:59:59+01:00", "9999-12-31T23:59:59Z",
         "-4712-01-01T00:00:00Z", "2026-02-30T25:61:61Z", "2026-03-28", "now", "", 0, None, {}]


def published_key():
    """The key that the tests of the crypto room have: PKCS#1, as Base64."""
    text = (FOLDER.parent / "support/crypto/oaep_vectors.h").read_text()
    literal = re.search(r"oaepPrivateKey\[\] =(.*?);", text, re.S)[1]
    return "".join(re.findall(r'"([^"]*)"', literal))


def item(text="hello", minute=0, **more):
    return {"from": "bob", "to": "alice", "peer": "bob", "text": text, "encrypted": 0,
            "createdAt": f"2026-03-29T01:{minute:02}:00Z", **more}


def row_seeds():
    five = [item(f"m{i}", i, **{"from": "bob" if i % 3 else "Alice"}) for i in range(5)]
    seeds = {
        "empty": [],
        "no_objects": [1, "a", None, [], True],
        "same": {"before": five, "after": five},
        "reversed": {"before": five, "after": five[::-1], "swedish": True},
        "one_more": {"before": five[:4], "after": five},
        "one_less": {"before": five, "after": five[:2] + five[3:]},
        "moved": {"before": five, "after": five[3:] + five[:3]},
        "twins": {"before": [item()] * 6, "after": [item()] * 4 + [item("other")] + [item()] * 4},
        "times": [item("t", createdAt=time) for time in TIMES],
        "no_time": {"before": [{"peer": "bob", "text": "a"}], "after": [{"from": "bob", "text": "a"}]},
        "envelopes": [item("c", encrypted=value, iv=opened) for value in (True, 1, 0.5, "1", None)
                      for opened in ("", "opened")],
        "wrong_types": [{"from": 1, "text": [], "peer": {}, "encrypted": {}, "createdAt": 5, "iv": False}],
        "users_and_servers": [{"username": " bob ", "groupId": "g", "name": "Group"}, {"username": "", "groupId": "g",
                              "name": "Other"}, {"username": 7, "groupId": 8}],
    }
    for name, text in HOSTILE.items():
        seeds[name] = [item(text, **{"from": text, "peer": text, "username": text, "groupId": text, "name": text})]
    result = {name: json.dumps(seed).encode() for name, seed in seeds.items()}
    result["lone_surrogates"] = LONE.encode()
    result["cut_off"] = json.dumps(seeds["same"]).encode()[:-20]
    result["deep"] = b"[" * 1025 + b"]" * 1025
    return result


def error_seeds():
    seeds = {name: {"message": text} for name, text in HOSTILE.items()}
    seeds |= {"message": {"message": "Wrong password", "error": "no"}, "error": {"error": "no"}, "neither": {},
              "null": {"message": None}, "number": {"message": 5, "error": "no"}, "array": ["message"],
              "object": {"message": {"message": "inner"}}, "empty": {"message": ""}}
    result = {name: json.dumps(seed).encode() for name, seed in seeds.items()}
    result["nothing"] = b""
    result["html"] = b"<html><body>502 Bad Gateway</body></html>"
    result["twice"] = b'{"message":"one","message":"two"}'
    result["no_utf8"] = b'{"message":"\xff\xfe\xc0\x80"}'
    result["deep"] = b'{"message":' * 1025 + b"1" + b"}" * 1025
    return result


def array_seeds():
    five = [json.dumps(item(f"m{i}", i)) for i in range(5)]
    whole = "[" + ",".join(five) + "]"
    seeds = {"same": [whole, whole], "one_more": ["[" + ",".join(five[:4]) + "]", whole],
             "one_less": [whole, "[" + ",".join(five[:2] + five[3:]) + "]"],
             "spaces": [whole, f" {whole} ", f"[ {whole[1:]}"],
             "reversed": [whole, "[" + ",".join(five[::-1]) + "]"], "empty": [whole, "[]", whole], "nothing": ["", ""],
             "cut_off": [whole, whole[:-1], whole], "comma": [whole, whole[:-1] + ",]"],
             "object": [whole, five[0], whole],
             "texts": [r'["a,b","]","\\","\"",","]', r'["a,b","]","\\\"",","]'],
             "numbers": ["[1,2,3]", "[1,2.0,3]", "[1,-,3]"],
             "brackets": ["[[1],[2]]", "[1],[2]", "[]],[[]"],
             "deep": ["[" * 1024 + "]" * 1024, "[" * 1025 + "]" * 1025],
             "twins": ["[1,1,1,1]", "[1,1]", "[1,1,1,1,1,1]"], "keys": ['[{"a":1,"a":2},3]', '[{"a":1,"a":2},4]']}
    return {name: "\x1e".join(bodies).encode() for name, bodies in seeds.items()}


def base64_seeds():
    return {"empty": b"", "blank": b" \r\n\t", "one": b"QQ==", "two": b"QUI=", "three": b"QUJD", "unpadded": b"QUI",
            "one_character": b"Q", "url_alphabet": b"-_-_", "both_alphabets": b"+/-_", "lines": b"QUJD\r\nREVG",
            "padding_inside": b"QQ==QQ==", "padding_only": b"====", "foreign": "\u00e5\u00e4\u00f6".encode(),
            "utf16": "QUJD".encode("utf-16-le"), "lone_surrogate": b"Q\0\x00\xd8Q\0Q\0", "spare_bits": b"QR==",
            "key": published_key().encode()}


def envelope(**more):
    keys = [{"deviceId": "dev-1", "encryptedKey": "$key"}]
    return {"encrypted": 1, "from": "bob", "text": "$sealed:hello", "iv": "$iv", "recipientKeys": keys,
            "senderKeys": [], **more}


def message_seeds():
    zeros = base64.b64encode(bytes(256)).decode()
    seeds = {name: envelope(text="$sealed:" + text) for name, text in HOSTILE.items()}
    seeds |= {
        "plain": {"encrypted": 0, "text": "$sealed:x"},
        "opens": envelope(), "empty_text": envelope(text="$sealed:"), "numbered": envelope(encrypted=2),
        "own": envelope(**{"from": " ALICE ", "senderKeys": [{"deviceId": " DEV-1 ", "encryptedKey": " $key"}]}),
        "second_device": envelope(recipientKeys=[1, {"deviceId": "dev-2", "encryptedKey": "$key"},
                                                 {"deviceId": "dev-1", "encryptedKey": ""},
                                                 {"deviceId": "DEV-1", "encryptedKey": "$key"}]),
        "no_key": envelope(recipientKeys=[]), "keys_are_no_array": envelope(recipientKeys={"deviceId": "dev-1"}),
        "no_text": envelope(text=" "), "no_iv": envelope(iv=5), "short_iv": envelope(iv="AAAA"),
        "bad_iv": envelope(iv="\u00e5"), "bad_text": envelope(text="=="), "short_text": envelope(text="AAAA"),
        "foreign_text": envelope(text=zeros), "bad_key": envelope(recipientKeys=[{"deviceId": "dev-1",
                                                                                   "encryptedKey": "\u00e5"}]),
        "zero_key": envelope(recipientKeys=[{"deviceId": "dev-1", "encryptedKey": zeros}]),
        "short_key": envelope(recipientKeys=[{"deviceId": "dev-1", "encryptedKey": "AAAA"}]),
    }
    return {name: json.dumps(seed).encode() for name, seed in seeds.items()}


def device(identifier="dev-1", key="$public", **more):
    return {"deviceId": identifier, "publicKeyBase64": key, **more}


def sealing_seeds():
    seeds = {name: {"text": text, "recipient": [device(), device(text)]} for name, text in HOSTILE.items()}
    seeds |= {
        "one": {"text": "hello", "recipient": [device()], "sender": [device()]},
        "pem": {"text": "hello", "recipient": [device("d", "$pem")]},
        "moved_key": {"text": "hello", "recipient": [{"deviceId": "dev-1", "publicKey": "$public"}]},
        "both_keys": {"text": "hello", "recipient": [device(publicKey="AAAA")]},
        "unusable": {"text": "hello", "recipient": [device(""), device("d", " "), 5, [], {}]},
        "second_is_bad": {"text": "hello", "recipient": [device(), device("%2", "AAAA")]},
        "no_base64": {"text": "hello", "recipient": [device("d", "\u00e5")]},
        "legacy": {"text": "hello", "recipient": [], "publicKey": "$public"},
        "no_text": {"text": "", "recipient": [device()]},
        "nobody": {"text": "hello", "recipient": []},
        "sender_is_bad": {"text": "hello", "recipient": [device()], "sender": [device("other"), device("dev-1", "AA")]},
        "half_a_key": {"text": "hello", "recipient": [device("d", base64.b64encode(b"0\x82\x01\x22").decode())]},
    }
    return {name: json.dumps(seed).encode() for name, seed in seeds.items()}


def key_seeds():
    private = published_key().encode()
    der = base64.b64decode(private)
    seeds = {"empty": b"", "private": private, "blank": b" \n", "bom": b"\xef\xbb\xbf" + private, "bom_alone":
             b"\xef\xbb\xbf", "white_space": b"\r\n " + private + b"\n\n", "no_base64": b"\xff\xfe", "public": b"p",
             "text": b"pnot a key", "nul": b"\0\0\0", "short": base64.b64encode(der[:-1]),
             "long": base64.b64encode(der + b"\0"), "indefinite": base64.b64encode(b"\x30\x80" + der[4:] + b"\0\0")}
    # Numbers of the key that fit no other: the public exponent, the first prime, the coefficient.
    for name, place in {"exponent": der.index(b"\x02\x03\x01\x00\x01") + 4, "modulus": 20, "coefficient": -1}.items():
        changed = bytearray(der)
        changed[place] ^= 1
        seeds["odd_" + name] = base64.b64encode(bytes(changed))
    modulus = der[11:11 + 257]
    for name, exponent in {"e_65537": b"\x02\x03\x01\x00\x01", "e_1": b"\x02\x01\x01", "e_0": b"\x02\x01\x00"}.items():
        inner = b"\x02\x82\x01\x01" + modulus + exponent
        rsa = b"\x30\x82" + len(inner).to_bytes(2, "big") + inner
        algorithm = bytes.fromhex("300d06092a864886f70d0101010500")
        bits = b"\x03\x82" + (len(rsa) + 1).to_bytes(2, "big") + b"\0" + rsa
        whole = algorithm + bits
        seeds["public_" + name] = b"p" + base64.b64encode(b"\x30\x82" + len(whole).to_bytes(2, "big") + whole)
    return seeds


def http_request(method, target, body=None, *headers):
    """As a signed-in client sends it; BODY is bytes, or an object for JSON."""
    content = body if isinstance(body, bytes) else b"" if body is None else json.dumps(body).encode()
    length = [f"Content-Length: {len(content)}"] if body is not None else []
    lines = [f"{method} {target} HTTP/1.1", "Host: h", "Cookie: tideloft_session=a", *length,
             *(headers or ["Content-Type: application/json"])]
    return "\r\n".join(lines).encode() + b"\r\n\r\n" + content


def exchange_seeds():
    def key(device):
        return {"deviceId": device, "encryptedKey": base64.b64encode(bytes(256)).decode()}
    plain = {"to": "bob", "text": "hello", "iv": "", "encryptedKey": "", "senderEncryptedKey": "", "recipientKeys": [],
             "senderKeys": [], "algorithm": "plain", "encrypted": 0}
    sealed = plain | {"text": base64.b64encode(bytes(40)).decode(), "iv": base64.b64encode(bytes(12)).decode(),
                      "recipientKeys": [key("d")], "senderKeys": [key("e")], "algorithm": "AES-GCM", "encrypted": 1}
    form = 'Content-Type: multipart/form-data; boundary="b"'

    def part(name, content=b"GIF89a"):
        return (f'--b\r\nContent-Disposition: form-data; name="{name}"; filename="a.gif"\r\n\r\n'.encode() + content
                + b"\r\n--b--\r\n")
    user = {"username": "carol", "password": "a good password"}
    gets = {"health": "/healthz", "me": "/api/me", "history": "/api/chat/history/bob", "groups": "/api/groups",
            "conversations": "/api/chat/conversations", "keys": "/api/chat/public-key/b%6fb",
            "own_keys": "/api/chat/device-keys/me", "search": "/api/users/search?q=b+%4F&q=2", "group": "/api/groups/g",
            "picture": "/pictures/x", "nowhere": "/api//x/../y", "encoded": "/api/chat/history/%00%ff%2f"}
    posts = {"register": ("/api/auth/register", user), "login": ("/api/auth/login", user | {"rememberMe": True}),
             "logout": ("/api/auth/logout", {}), "send": ("/api/chat/send", plain), "sealed": ("/api/chat/send", sealed),
             "profile": ("/api/profile/update", {"bio": HOSTILE["markup"]}), "group_made": ("/api/groups", {
                 "name": "Chess", "description": ""}), "device": ("/api/chat/device-key", {
                     "deviceId": "d", "deviceName": "n", "publicKey": published_key()})}
    head = "POST /api/auth/login HTTP/1.1\r\nHost: h\r\n"
    return {name: http_request("GET", target) for name, target in gets.items()} | {
        name: http_request("POST", *post) for name, post in posts.items()} | {
        "unchanged": http_request("GET", "/api/groups", None, "If-None-Match: *, W/\"x\""),
        "avatar": http_request("POST", "/api/profile/avatar/upload", part("avatar"), form),
        "foreign_avatar": http_request("POST", "/api/profile/avatar/upload", part("avatar"), form, "Origin: http://x"),
        "wrong_part": http_request("POST", "/api/profile/avatar/upload", part("icon"), form),
        "two": http_request("GET", "/api/me") + http_request("POST", "/api/chat/send", plain),
        "chunked": f"{head}Content-Type: application/json\r\nTransfer-Encoding: chunked\r\n\r\n2;x=y\r\n{{}}\r\n0\r\nT: t"
                   "\r\n\r\n".encode(),
        "two_lengths": f"{head}Content-Length: 1\r\nContent-Length: 2\r\n\r\nab".encode(),
        "both": f"{head}Content-Length: 1\r\nTransfer-Encoding: chunked\r\n\r\n0\r\n\r\n".encode(),
        "expects": f"{head}Expect: 100-continue\r\nContent-Length: 2\r\n\r\n{{}}".encode(),
        "old": b"GET /healthz HTTP/1.0\r\n\r\n", "bare_lines": b"GET / HTTP/1.1\nHost: h\n\n", "nothing": b"",
        "method": http_request("BREW", "/api/me"), "cut_off": http_request("GET", "/api/me")[:-3]}


def proxy_block(command, family, rest):
    return b"\r\n\r\n\0\r\nQUIT\n" + bytes([command, family]) + len(rest).to_bytes(2, "big") + rest


def proxy_seeds():
    v4, v6 = bytes([192, 0, 2, 7, 10, 0, 0, 1]), bytes.fromhex("20010db8" + "00" * 11 + "07") * 2
    ports = bytes([15, 160, 1, 187])
    return {"nothing": b"", "line": b"PROXY TCP4 192.0.2.7 10.0.0.1 4000 443\r\nGET / HTTP/1.1\r\n\r\n",
            "line_v6": b"PROXY TCP6 2001:db8::7 ::1 65535 443\r\n", "unknown": b"PROXY UNKNOWN any words\r\n",
            "long_line": b"PROXY UNKNOWN " + b"f" * 200, "zone": b"PROXY TCP6 fe80::1%lo ::1 1 2\r\n",
            "zero": b"PROXY TCP4 192.0.2.7\0 10.0.0.1 4000 443\r\n",
            "block": proxy_block(0x21, 0x11, v4 + ports) + b"\x16\x03\x01",
            "block_v6": proxy_block(0x21, 0x21, v6 + ports),
            "entries": proxy_block(0x21, 0x11, v4 + ports + b"\x02\0\x03abc\x04\0\0"), "own": proxy_block(0x20, 0, b""),
            "own_anything": proxy_block(0x20, 0xff, b"anything"), "datagrams": proxy_block(0x21, 0x12, v4 + ports),
            "short": proxy_block(0x21, 0x21, v4 + ports),
            "beyond": proxy_block(0x21, 0x11, v4 + ports + b"\x04\0\x09a"),
            "huge": proxy_block(0x21, 0x11, v4)[:14] + b"\xff\xff", "request": http_request("GET", "/healthz"),
            "cut_off": proxy_block(0x21, 0x11, v4 + ports)[:-3]}


def list_seeds():
    steps = {"nothing": [], "few": [3], "many": [250], "scrolls": [250, 5, 0, 7, 5, 128, 7, 5, 255],
             "sizes": [120, 4, 30, 200, 4, 250, 20, 7], "inserts": [200, 0, 128, 200, 0, 0, 255, 3, 5, 64, 3],
             "removals": [250, 1, 0, 255, 3, 5, 0], "all_go": [100, 1, 0, 255, 3, 0, 0, 9, 3],
             "changes": [80, 2, 255, 15, 3, 2, 0, 31, 3], "stopped": [250, 6, 5, 10, 3],
             "narrow": [150, 4, 0, 90, 5, 128, 4, 255, 255, 7, 7], "flat": [90, 4, 100, 0, 5, 0, 4, 100, 200],
             "unshown": [60, 0, 10, 70, 5, 30, 2, 50, 3, 7, 4, 90, 90, 1, 200, 9, 7]}
    return {name: bytes(content) for name, content in steps.items()}


def main():
    corpora = {"base64": base64_seeds(), "error_body": error_seeds(), "history_rows": row_seeds(),
               "conversation_rows": row_seeds(), "open_message": message_seeds(), "seal_envelope": sealing_seeds(),
               "key_file": key_seeds(), "reply_cache": array_seeds(), "history_list": list_seeds(),
               "proxy_header": proxy_seeds(), "service_exchange": exchange_seeds()}
    for target, seeds in corpora.items():
        folder = FOLDER / "corpus" / target
        folder.mkdir(parents=True, exist_ok=True)
        for name, content in seeds.items():
            (folder / name).write_bytes(content)


if __name__ == "__main__":
    main()
