#!/usr/bin/env python3
"""Writes the seeds: for each fuzz target a folder of small inputs that together reach nearly every
branch that an input can reach (scripts/fuzz-coverage measures this). The output is always the same.

    fuzz/makeSeeds.py FOLDER
"""
import binascii
import itertools
import pathlib
import shutil
import struct
import sys

STEPS = "strayBytes frame filledFrame spoiltFrame wrap".split()


def text(data):
    """A count byte, then that many bytes."""
    return bytes([len(data)]) + data


# --- IR files ------------------------------------------------------------------------------------

def wav(rate=44100, channels=1, bits=16, samples=b"\x01\x80\xff\x7f", riff=b"RIFF", form=b"WAVE",
        before=b"", tail=b"", size=None):
    fmt = struct.pack("<HHIIHH", 1, channels, rate, 0, 0, bits) + tail
    body = form + before + b"fmt " + struct.pack("<I", len(fmt)) + fmt
    body += b"data" + struct.pack("<I", len(samples) if size is None else size) + samples
    return riff + struct.pack("<I", len(body)) + body


def factory(number, samples=b"\x12\x34\x56\xff"):
    return (b"VadelIR" + bytes([number])).ljust(512, b"U") + samples


def ir_contents():
    floats = struct.pack("<10f", 1, -1, 0.5, -0.5, 1.5, -3, 300, -300, float("nan"), float("-inf"))
    ordinary = struct.pack("<10f", *(0.09 * i - 0.4 for i in range(10)))  # none beyond full scale
    for bits, channels in itertools.product((8, 16, 24, 32), (1, 2)):
        for rate in (44100, 48000, 88200, 96000):
            yield wav(rate, channels, bits, floats)
        frame = bits // 8 * channels
        yield wav(44100, channels, bits, ordinary[:2 * frame + bits // 16], size=3 * frame)  # ends inside a frame
        yield wav(48000, channels, 32, ordinary)
    good = wav()
    odd = [wav(96000, 2, 8, bytes(range(256)) * 16), wav(size=0xFFFFFFFF), wav(samples=b""),
           wav(channels=3), wav(48000, channels=6), wav(channels=0), wav(channels=0xFFFF, bits=0xFFFF),
           wav(before=b"LIST\x08\0\0\0data\0\0\0\0"), wav(before=b"LIST\x04\0\0\0fmt "),
           wav(tail=b"\0\0"), wav(tail=b"\x16" * 24),
           good[:30], good[:40], good[:42], b"", good[:1], good[:11], good[:12]]
    odd += [wav(rate=rate) for rate in (0, 22050, 0xFFFFFFFF)]
    odd += [wav(bits=bits) for bits in (0, 7, 12, 20, 64)]
    for kind in (good, wav(riff=b"RIFX"), wav(form=b"AVI ")):
        odd += [kind, kind.replace(b"fmt ", b"fmt_"), kind.replace(b"data", b"dat_")]
    odd += [factory(number) for number in (0, 15, 29, 30, 255)]
    odd += [factory(3)[:size] for size in (8, 12, 511, 512, 514)]
    yield from odd + [factory(3, bytes(range(256)) * 12)]


def ir_file():
    yield from (text(b"Cab.wav") + content for content in ir_contents())
    yield from (text(name) + wav() for name in names())


def inspect_files():
    for index, content in enumerate(list(ir_contents())[::3]):
        yield (bytes([index * 37 & 0xFF]) + text(b"a.wav") + struct.pack("<H", len(content)) + content +
               (text(b"b.wav") + content if index % 2 else text(b"\x1b\xff.wav") + wav()))


def dry_phrase():
    for rate, channels, bits in itertools.product((100, 441, 44100), (1, 2), (8, 16, 24, 32)):
        yield wav(rate, channels, bits, b"\x01\x20\x30\x3f" * 250)
    yield from (wav(100, samples=bytes(400)), wav(100, samples=b"\1" * 98), wav(10, bits=8, samples=b"x" * 900),
                wav(100, 1, 32, b"\0\0\xc0\x7f\0\0\0\x3f\0\0\x7f\x7f\0\0\x7f\xff" * 50).replace(b"\1\0", b"\3\0", 1), b"")  # floats


def names():
    yield from (b"a", b"a.wav", b"a.wav.wav", b"a.wavb.wav", b"a.wav.bak", b"Deep.WAV", b".wav",
                b"", b".", b"..", b"a/b.wav", b"a\0b.wav", b"Cabinet_1960.wav", b"n" * 255,
                b"\xcc\x81.wav", b"x\xe2\x82")  # the last two begin or end inside a letter
    odd = "é e\u0301 \u0301 € 😀 \u00ad \u061c \u200b \u2066 \ufeff \x01 \x7f \U000e0041".split(" ")
    yield from (("x" + letter + ".wav").encode() for letter in odd)
    yield from (b"x" + letter + b".wav" for letter in (
        b"\x80", b"\xc0\xaf", b"\xff", b"\xf5\x80\x80\x80",  # invalid first bytes
        b"\xe0\x80\xaf", b"\xf0\x80\x80\xaf",  # overlong
        # a surrogate, too large a code, three truncated ones
        b"\xed\xa0\x80", b"\xf4\x90\x80\x80", b"\xe2\x82", b"\xc3", b"\xe2\x82("))


# --- Streams -------------------------------------------------------------------------------------

def frame(body):
    covered = struct.pack("<H", len(body)) + body
    return b"\xaa\x55" + covered + struct.pack(">H", binascii.crc_hqx(covered, 0) ^ 0xFFFF)


def step(name, *arguments):
    data = bytes([STEPS.index(name)])
    for argument in arguments:
        data += text(argument) if isinstance(argument, bytes) else bytes([argument])
    return data


def stray(data):
    return step("strayBytes", data)


def filled(length, fill):
    return step("filledFrame", length & 0xFF, length >> 8, fill)


def header(length):
    """A start that takes what follows as its body."""
    return stray(b"\xaa\x55" + struct.pack("<H", length))


EMPTY, CONFIRMED, ASKED = step("frame", b""), step("frame", b"\xf8"), step("frame", b"\xef")

SCRIPTS = [
    b"", CONFIRMED, ASKED, EMPTY + ASKED, step("frame", b"\xefx"), step("frame", b"\x42?") + CONFIRMED,
    stray(b"\1\2\3\4\5") + CONFIRMED, stray(b"\xaa") + CONFIRMED, stray(b"\xaa\x54") + CONFIRMED,
    stray(b"\xaa\xaa\xaa\x55\xaa\x55") + CONFIRMED, header(1019) + CONFIRMED, header(65535) + ASKED,
    # invalid frames with valid ones inside, and what follows them
    header(20) + CONFIRMED + stray(b"\x11" * 15), header(30) + ASKED + CONFIRMED + stray(b"\xaa\x11" * 9),
    header(9) + CONFIRMED + stray(b"\1\xaa\x55\1") + ASKED, header(1018) + filled(600, 0x33) + ASKED * 80,
    header(40) + header(20) + CONFIRMED * 6, CONFIRMED + ASKED + step("wrap", 14) + ASKED,
    step("spoiltFrame", b"\xf8", 6, 1) + CONFIRMED, step("spoiltFrame", b"\xf8", 5, 1) + CONFIRMED,
    step("spoiltFrame", b"\xf8\xaa\x55", 2, 4) + CONFIRMED * 2, step("spoiltFrame", b"", 5, 1) + EMPTY,
    stray(frame(b"\xf8payload")[:9]) + CONFIRMED * 2, stray(frame(b"\xf8payload")[:3]),
    filled(1018, 0xF8) + CONFIRMED, filled(1019, 0xF8) + CONFIRMED, filled(1018, 0xAA) + filled(1017, 0x55),
    step("frame", b"\xf7\0\0\1" + b"n" * 75) + step("frame", b"\xf7\0\0\2" + b"\xe9" * 75),
    bytes([255]) + stray(b"last"),  # any number selects a step
]

PIECES = [text(plan) for plan in (
    b"", b"\x40", b"\x7e", b"\x3e", b"\x3f", b"\x7f", b"\xff", b"\xc0\x3f\x05\x80\x06\x7e")]


def receive_stream():
    for script, pieces in itertools.product(SCRIPTS, (PIECES[1], PIECES[7])):
        yield b"\0\0" + pieces + script
    yield from (struct.pack("<H", 10239 - i * 77) + pieces + (filled(516, 0xE9) + CONFIRMED) * 3
                for i, pieces in enumerate(PIECES))  # the ring wraps


# --- Reports -------------------------------------------------------------------------------------

def report(stream, *bits, length=None):
    start = [sum(bits)] if length is None else [sum(bits) | 0x10, length]
    return bytes(start) + text(bytes([len(stream)]) + stream)


def input_reports():
    """Situation bits, then choices; the bits are in Bus.h."""
    other, nobody, identity, version, model_a = 0x04, 0x08, 0x20, 0x40, 0x80
    come, go, run = b"\x03", b"\x0b", b"\x02"
    names = frame(b"\xf7\0\0\1" + bytes(11) + b"Names" * 13)
    told = report(names[:63]) + report(names[63:]) + run + b"\3" + report(frame(b"\xf8")) + run + b"\1"
    hands = [report(b"", identity, version, model_a), report(b"", identity, model_a),
             report(b"", identity), report(b"V"), report(b"\0\0\0\0\0VEX_Tombro")]
    for situation in range(8):
        yield bytes([situation]) + told + go + report(b"gone") + come + told
        for hand in hands:
            yield bytes([situation]) + hand + told + hand
    for length in (0, 1, 63, 65, 255):
        yield bytes([2]) + report(b"data", length=length) + run + b"\x03"
    yield bytes([2]) + report(b"x" * 63, other) + report(b"x" * 63, nobody) + run + b"\x03"
    yield bytes([0]) + report(b"x", nobody) + come + bytes([0x07, 0x0f]) + go + b"\x0f" + come
    yield bytes([5]) + bytes([0x07]) + report(b"", other, identity) + bytes([0x0f])
    yield bytes([2]) + b"\x00" + text(b"\xff" + b"n" * 63) + run + b"\x40"  # counts 255
    yield bytes([10]) + report(b"\xaa" * 63) * 2 + run + b"\x1f"  # more than fits


# --- Presets -------------------------------------------------------------------------------------

def preset_image():
    data = bytes(range(256)) * 6
    good = struct.pack("<III", 2048, 1, 0).ljust(508, b"r") + struct.pack("<I", sum(data)) + data
    broken = [good[:2047], good + b"x", b"", good[:4] + b"\2" + good[5:], good[:-1] + b"\0",
              good[:8] + b"\1" + good[9:], good[:4] + b"\2" + good[5:-1] + b"\0"]
    for image, mended in itertools.product([good] + broken, (0, 1)):
        yield bytes([mended]) + struct.pack("<H", 1536) + image
    for length in (0, 1, 1536, 1537, 65535):
        yield b"\0" + struct.pack("<H", length) + good


# --- The memory of slots -------------------------------------------------------------------------

def slot_record():
    def texts(*words):
        return b"".join(struct.pack("<I", len(word)) + word for word in words)
    start, good = b"cabslot1" + struct.pack("<q", 1 << 30), texts(b"usb", b"Cab", b"/irs/Cab.wav")
    for mended, rest in itertools.product((0, 1), (
            good, good + b"x", good[:-1], good[:5], texts(b"sim", b"", b""), texts(b"usb", b""), b"",
            texts(b"usb", b"x" * 3000, b""), texts(b"usb") + b"\xff" * 8)):
        yield bytes([mended, 7]) + start + rest
        yield bytes([mended, 7]) + start.replace(b"1", b"3") + rest
    newer = (texts(b"usb") + b"Cab       \0    \1" + texts(b"/irs/Cab.wav", b"User 1") +
             struct.pack("<I", 1) + texts(b"cut_off", b"Half is lost."))
    for rest in (newer, newer + b"x", newer[:-1], newer.replace(b"\1", b"\4", 1), newer.replace(b"cut", b"cat"),
                 newer.replace(struct.pack("<I", 1) + texts(b"cut_off"), b"\xff" * 4 + texts(b"cut_off"))):
        yield bytes([1, 7]) + start.replace(b"1", b"2") + rest
    yield from (bytes([1, 0]) + start[:length] for length in (0, 8, 15))


# --- Sets ----------------------------------------------------------------------------------------

def set_file():
    slot = b'{"name": "\2", "factory": false, "source": "a.wav", "points": "\1", "checksum": "\3"}'
    unknown = b'"unknown"'

    def of(*slots, name=b"A", version=b"1"):
        return text(name) + b'{"version": ' + version + b', "slots": [' + b", ".join(slots) + b"]}"

    good = of(slot, unknown, slot, slot)
    yield from (good, good[:-1], good + b" x", b"")
    yield from (b"\0" + document for document in (b"[" * 9, b'{"a": 1, "a": 2}', b'{"slots": []}', b'{"version": 1}',
                                                 b"{" + b", ".join(b'"%d": 0' % i for i in range(120)) + b"}"))
    yield from (of(slot, version=v) for v in (b"2", b"-1", b"1.5", b"1e999", b"18446744073709551615", b"null", b"true"))
    yield from (of(*[unknown] * count) for count in (3, 4, 5))
    names = (b"", b"Elevenchars", b"\xc3\xa9", b"\xff", b" 1960BT    4x12", b"A/B ")
    for old, new in ((b"x", b"x"), (b"false", b"true"), (b"false", b"0"), (b'"a.wav"', b"null"), (b'"a.wav"', b'""'),
                     (b'"a.wav"', b"7"), (b'"a.wav"', b'"' + b"x" * 4100 + b'"'), (b"\1", b"\1A==="), (b"\1", b"\1AAAA"),
                     (b"\1", b"A*"), (b"\3", b"0"), (b'"factory": false, ', b""), (slot, b"{}"), (slot, b"0")):
        for name in (b"A", *names) if new in (b"x", b"true", b"null") else (b"A",):
            yield of(slot.replace(old, new), *[unknown] * 3, name=name)


for seeds in (ir_file, input_reports, preset_image, receive_stream, slot_record, set_file, inspect_files, dry_phrase):
    folder = pathlib.Path(sys.argv[1], seeds.__name__)
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    for index, seed in enumerate(seeds()):
        (folder / f"{index:03}").write_bytes(seed)
