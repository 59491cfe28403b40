#!/usr/bin/env python3
"""Opens a sealed envelope independently of the program: key (hexadecimal) as argument, envelope on standard input,
content on standard output."""
import sys

from cryptography.hazmat.primitives.ciphers.aead import AESGCM

envelope = sys.stdin.buffer.read()
assert envelope[:5] == b"BRVN1"
sys.stdout.buffer.write(AESGCM(bytes.fromhex(sys.argv[1])).decrypt(envelope[5:17], envelope[17:], None))
