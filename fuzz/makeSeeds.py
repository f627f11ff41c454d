#!/usr/bin/env python3
"""Writes the seeds: for each fuzz target a folder of small inputs that together reach every branch
of the code behind it that an input can reach (docs/fuzzing.md has the figures). Same output each
time.

    fuzz/makeSeeds.py FOLDER
"""
import itertools
import pathlib
import struct
import sys


def text(data):
    """A count byte and as many bytes."""
    return bytes([len(data)]) + data


# --- IR files ------------------------------------------------------------------------------------

STANDINGS = ("file nothing folder pipe socket device linkToFile linkToNothing linkToItself"
             " behindFile hugeFile").split()


def wav(rate=44100, channels=1, bits=16, samples=b"\x01\x80\xff\x7f", riff=b"RIFF", form=b"WAVE",
        before=b"", size=None):
    fmt = struct.pack("<HHIIHH", 1, channels, rate, 0, 0, bits)
    body = form + before + b"fmt " + struct.pack("<I", len(fmt)) + fmt
    body += b"data" + struct.pack("<I", len(samples) if size is None else size) + samples
    return riff + struct.pack("<I", len(body)) + body


def factory(number, samples=b"\x12\x34\x56\xff"):
    return (b"VadelIR" + bytes([number])).ljust(512, b"U") + samples


def ir(content, name=b"Cab.wav", standing="file"):
    length = struct.pack("<H", len(name))
    return bytes([STANDINGS.index(standing)]) + length + name + content


def ir_files():
    floats = struct.pack("<10f", 1, -1, 0.5, -0.5, 1.5, -3, 300, -300, float("nan"), float("-inf"))
    for rate, channels, bits in itertools.product((44100, 48000, 88200, 96000), (1, 2),
                                                  (8, 16, 24, 32)):
        yield ir(wav(rate, channels, bits, floats))
    ordinary = struct.pack("<10f", *(0.09 * i - 0.4 for i in range(10)))  # none beyond full scale
    for rate, channels in itertools.product((44100, 48000), (1, 2)):
        yield ir(wav(rate, channels, 32, ordinary))
    for bits, channels in itertools.product((8, 16, 24, 32), (1, 2)):
        frame = bits // 8 * channels
        yield ir(wav(bits=bits, channels=channels, samples=ordinary[:2 * frame + bits // 16],
                     size=3 * frame))  # ends inside a sample
    yield ir(wav(96000, 2, 8, bytes(range(256)) * 16))  # more frames than are decoded
    yield ir(wav(size=0xFFFFFFFF))  # claims more than it has
    yield ir(wav(samples=b""))
    yield ir(wav(channels=3))
    yield ir(wav(channels=0))
    yield ir(wav(channels=0xFFFF, bits=0xFFFF))
    for rate in (0, 22050, 0xFFFFFFFF):
        yield ir(wav(rate=rate))
    for bits in (0, 7, 12, 20, 64):
        yield ir(wav(bits=bits))
    yield ir(wav(before=b"LIST\x08\0\0\0data\0\0\0\0"))  # a tag inside another chunk counts
    for kind in ({"riff": b"RIFX"}, {"form": b"AVI "}):
        whole = wav(**kind)
        for content in (whole, whole.replace(b"fmt ", b"fmt_"), whole.replace(b"data", b"dat_")):
            yield ir(content)
    yield ir(wav().replace(b"fmt ", b"fmt_"))
    yield ir(wav().replace(b"data", b"dat_"))
    yield ir(wav()[:30])  # ends within "fmt "
    yield ir(wav()[:42])  # ends within "data"
    yield ir(wav()[:40])  # the tag is the last that there is
    for size in (0, 1, 7, 11, 12):
        yield ir(wav()[:size])
    for number in (0, 15, 29, 30, 255):
        yield ir(factory(number))
    yield ir(factory(3, bytes(range(256)) * 12))
    for size in (8, 12, 511, 512, 514):
        yield ir(factory(3)[:size])
    yield from (ir(wav(), name) for name in names())
    for standing in STANDINGS:
        yield ir(wav(), standing=standing)
        yield ir(factory(1), b"some.ir", standing)


def names():
    yield from (b"a", b"a.wav", b"a.wav.wav", b"a.wavb.wav", b"a.wav.bak", b"Room.WAV", b".wav",
                b"", b".", b"..", b"a/b.wav", b"a\0b.wav", b"Cabinet_1960.wav", b"n" * 255,
                b"n" * 256, b"n" * 120)
    odd = ["é", "e\u0301", "\u0301", "€", "😀", "\u00a0", "\u00ad", "\u061c", "\u200b", "\u2028",
           "\u2066", "\ufeff", "\x01", "\x7f", "\U000e0041", "\U000100ff"]
    yield from (("x" + letter + ".wav").encode() for letter in odd)
    yield "\u0301.wav".encode()  # an accent without a letter
    yield from (b"x" + letter + b".wav" for letter in (
        b"\x80", b"\xc0\xaf", b"\xff", b"\xf5\x80\x80\x80",  # no leads
        b"\xe0\x80\xaf", b"\xf0\x80\x80\xaf",  # spelt too long
        b"\xed\xa0\x80", b"\xf4\x90\x80\x80",  # a surrogate, too large a code
        b"\xe2\x82", b"\xc3", b"\xe2\x82("))  # not all there
    yield b"x\xe2\x82"


# --- Streams -------------------------------------------------------------------------------------

STEPS = ("strayBytes frame filledFrame spoiltFrame cutFrame header wrap importFrame wholeImport"
         " allData").split()


def step(name, *arguments):
    data = bytes([STEPS.index(name)])
    for argument in arguments:
        data += text(argument) if isinstance(argument, bytes) else bytes([argument])
    return data


def number16(value):
    return value & 0xFF, value >> 8


CONFIRMED = step("frame", b"\xf8")
ASKED = step("frame", b"\xef")
EMPTY = step("frame", b"")

SCRIPTS = [
    b"",
    CONFIRMED,
    ASKED,
    EMPTY + ASKED,
    step("frame", b"\xefx"),
    step("frame", b"\x42unknown") + CONFIRMED,
    step("strayBytes", b"\1\2\3\4\5") + CONFIRMED,
    step("strayBytes", b"\xaa") + CONFIRMED,
    step("strayBytes", b"\xaa\x54") + CONFIRMED,
    step("strayBytes", b"\xaa\xaa\xaa\x55\xaa\x55") + CONFIRMED,
    step("header", *number16(1019)) + CONFIRMED,
    step("header", *number16(65535)) + ASKED,
    # bad frames with good ones inside, and what is left behind them
    step("header", *number16(20)) + CONFIRMED + step("strayBytes", b"\x11" * 15),
    step("header", *number16(30)) + ASKED + CONFIRMED + step("strayBytes", b"\xaa\x11" * 9),
    step("header", *number16(9)) + CONFIRMED + step("strayBytes", b"\1\xaa\x55\1") + ASKED,
    step("header", *number16(1018)) + step("filledFrame", *number16(600), 0x33) + ASKED * 80,
    step("header", *number16(40)) + step("header", *number16(20)) + CONFIRMED * 6,
    CONFIRMED + ASKED + step("wrap", 14) + ASKED,  # frames inside a good one
    step("spoiltFrame", b"\xf8", 6, 1) + CONFIRMED,
    step("spoiltFrame", b"\xf8\xaa\x55", 2, 4) + CONFIRMED * 2,
    step("spoiltFrame", b"", 5, 1) + EMPTY,
    step("cutFrame", b"\xf8payload", 9) + CONFIRMED * 2,
    step("cutFrame", b"\xf8payload", 3),
    step("filledFrame", *number16(1018), 0xF8) + CONFIRMED,
    step("filledFrame", *number16(1019), 0xF8) + CONFIRMED,
    step("filledFrame", *number16(1018), 0xAA) + step("filledFrame", *number16(1017), 0x55),
    step("allData", 1, ord("n")) + step("allData", 0, 0) + step("allData", 2, 0xE9),
    step("wholeImport", 2, 0, 0x7F) + ASKED,
    step("wholeImport", 4, 1, 0xAA) + step("wholeImport", 4, 1, 0) + step("wholeImport", 1, 1, 9)
    + step("wholeImport", 3, 0, 1),
    # imports that do not go on as they began
    step("importFrame", 0, 1, 0, 65) + step("importFrame", 0, 1, 0, 66),
    step("importFrame", 0, 1, 0, 65) + step("importFrame", 2, 1, 0, 66),
    step("importFrame", 0, 1, 0, 65) + step("importFrame", 1, 2, 0, 66),
    step("importFrame", 0, 1, 0, 65) + step("importFrame", 1, 1, 1, 66),
    step("importFrame", 1, 1, 0, 65),
    step("importFrame", 7, 1, 0, 65),
    step("wholeImport", 0, 0, 1) + step("wholeImport", 5, 0, 1),
    step("importFrame", 0, 0, 0, 65) + step("importFrame", 0, 5, 0, 65),
    step("frame", b"\xe9") + step("frame", b"\xe9\0\1\0") + step("frame", b"\xe9\0\1\0name"),
    step("frame", b"\xe9\0\1\0" + b"too long".ljust(17))
    + b"".join(step("importFrame", number, 1, 0, 66) for number in range(1, 7)),
    bytes([255]) + step("strayBytes", b"last"),  # any number is a step's
]

PIECES = [text(plan) for plan in (
    b"", b"\x40", b"\x7e", b"\x3e", b"\x3f", b"\x7f", b"\xff", b"\xc0\x3f\x05\x80\x06\x7e")]


def unpackings():
    for script, pieces in itertools.product(SCRIPTS, (PIECES[1], PIECES[7])):
        yield pieces + script
    long = step("wholeImport", 1, 0, 1) + CONFIRMED  # again and again: the ring buffer wraps
    yield from (pieces + long * 5 for pieces in PIECES)


def pedals():
    for script in SCRIPTS:
        yield bytes([0]) + PIECES[7] + script
    everything = step("wholeImport", 2, 0, 65) + ASKED
    for faults in [0, 0x40, 0x80] + [1 << bit for bit in range(6)] + [0x3E, 0x7F, 0xFF]:
        yield bytes([faults]) + PIECES[2] + everything
    yield from (bytes([0x40]) + pieces + everything for pieces in PIECES)
    # Two imports before the first is confirmed, of different slots and of the same.
    for first, second in ((1, 2), (4, 3), (2, 2)):
        yield (b"\0" + PIECES[3] + step("wholeImport", first, 1, 1)
               + step("wholeImport", second, 1, 2))


# --- Raw streams and reports ---------------------------------------------------------------------

FRAMES = {
    "empty": bytes.fromhex("aa550000ffff"),
    "asked": bytes.fromhex("aa550100efc40e"),
    "confirmed": bytes.fromhex("aa550100f8a6d8"),
}


def crc(data):
    value = 0
    for byte in data:
        value ^= byte << 8
        for _ in range(8):
            value = (value << 1 ^ (0x1021 if value & 0x8000 else 0)) & 0xFFFF
    return value ^ 0xFFFF


def frame(body):
    covered = struct.pack("<H", len(body)) + body
    return b"\xaa\x55" + covered + struct.pack(">H", crc(covered))


def all_data(flag, name):
    return frame(b"\xf7" + bytes([0, 0, flag]) + bytes(11) + name.ljust(64, b" ")[:64])


def put(data):
    return bytes([len(data)]) + data


def ticks(count):
    return bytes([192 + count])


def again(count):
    return bytes([223 + count])


def raw_streams():
    for data in FRAMES.values():
        yield put(data) + ticks(1)
        yield put(b"\1\2\3" + data * 2) + ticks(5)
        yield b"".join(put(bytes([byte])) + ticks(1) for byte in data)
    yield put(all_data(1, b"Names")) + ticks(1) + put(all_data(0, b"\0\xe9" * 32)) + ticks(1)
    yield put(b"\xaa\x55\xfb\x03\xaa\x55\xfa\x03" + b"\xaa" * 150) + ticks(1)
    yield put(b"\xaa\x55\x14\0" + FRAMES["confirmed"] + b"\x11" * 15) + ticks(2)
    yield put(b"\xaa\x55\x07\0" + FRAMES["empty"] + b"\x11" * 3) + ticks(1)
    yield put(b"\xaa\x55\x20\0" + FRAMES["empty"] + b"\xaa\x11" * 14) + ticks(2)
    yield put(b"x" * 191) + again(31) + ticks(31) + again(31) + ticks(31) * 9 + again(2)
    yield put(b"x" * 160) + again(31) * 2 + again(1)  # just full
    yield put(frame(b"\x42" + b"y" * 180)) + again(31) + again(31) + (ticks(31) + again(31)) * 3
    yield put(frame(b"\xf8")) + bytes([255]) + ticks(1) + put(frame(b"\xf8"))[:4] + bytes([255])


def report(stream, *bits, length=None):
    choice = sum(bits) | (0x10 if length is not None else 0)
    odd = b"" if length is None else bytes([length])
    return bytes([choice]) + odd + text(bytes([len(stream)]) + stream)


def report_rows():
    """Situation bits, then choices; the bits are in input_reports.cpp."""
    other, nobody, identity, version, model_a = 0x04, 0x08, 0x20, 0x40, 0x80
    come, go, run = b"\x03", b"\x0b", b"\x02"
    names = all_data(1, b"Names" * 13)
    told = report(names[:63]) + report(names[63:]) + run + b"\x03"
    told += report(FRAMES["confirmed"]) + run + b"\x01"
    hands = [report(b"", identity, version, model_a), report(b"", identity, model_a),
             report(b"", identity), report(b"V"), report(b"\0\0\0\0\0VEX_Tombro")]
    for situation in range(16):
        yield bytes([situation]) + told + go + report(b"gone") + come + told
        for hand in hands:
            yield bytes([situation]) + hand + told + hand
    for length in (0, 1, 63, 65, 255):
        yield bytes([6]) + report(b"data", length=length) + run + b"\x03"
    yield bytes([6]) + report(b"x" * 63, other) + report(b"x" * 63, nobody) + run + b"\x03"
    yield bytes([4]) + report(b"x", nobody) + come + bytes([0x07, 0x0f]) + go + b"\x0f" + come
    yield bytes([13]) + bytes([0x07]) + report(b"", other, identity) + bytes([0x0f])
    yield bytes([6]) + b"\x00" + text(b"\xff" + b"n" * 63) + run + b"\x40"  # counts 255
    yield bytes([6]) + report(b"x" * 63) * 62 + run + b"\xff"  # does not empty it
    yield bytes([2]) + report(b"\xaa" * 63) * 170 + run + b"\x01"  # more than fits


# --- Presets -------------------------------------------------------------------------------------

def presets():
    content = struct.pack("<III", 2048, 1, 0) + b"reserved".ljust(496, b"\0")
    data = bytes(range(256)) * 6
    good = content + struct.pack("<I", sum(data)) + data
    broken = [good[:2047], good + b"x", b"", good[:4] + b"\2" + good[5:], good[:-1] + b"\0",
              good[:8] + b"\1" + good[9:], good[:4] + b"\2" + good[5:-1] + b"\0"]
    for image in [good] + broken:
        for mended in (0, 0x0F):
            yield bytes([0, mended]) + struct.pack("<H", 1536) + image
    for length in (0, 1, 1536, 1537, 65535):
        yield bytes([0, 0]) + struct.pack("<H", length) + good
    for standing in range(len(STANDINGS)):
        yield bytes([standing, 0]) + struct.pack("<H", 12) + good
    yield bytes([0, 7])  # mended but for the checksum
    yield bytes([0, 0x0B]) + struct.pack("<H", 3) + b"\xff" * 600


TARGETS = {
    "ir_file": ir_files,
    "receive_stream": raw_streams,
    "input_reports": report_rows,
    "preset_image": presets,
    "pedal_frames": pedals,
    "unpack_differential": unpackings,
}


def main():
    for target, seeds in TARGETS.items():
        folder = pathlib.Path(sys.argv[1], target)
        folder.mkdir(parents=True, exist_ok=True)
        for old in folder.iterdir():
            old.unlink()
        for index, seed in enumerate(seeds()):
            (folder / f"{index:03}").write_bytes(seed)


if __name__ == "__main__":
    main()
