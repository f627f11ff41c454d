"""Runs what bench/ builds and writes the one table of results. scripts/bench calls it.

    bench/table.py BUILD OUTPUT

Everything is measured alternately with what it is compared with, so that the ratios do not depend on
the machine. Medians unless a row says otherwise.
"""

import json
import os
import re
import statistics
import struct
import subprocess
import sys
import tempfile
import time
import wave
from collections import defaultdict
from contextlib import contextmanager

build, output = sys.argv[1], sys.argv[2]
programs = os.path.join(build, "bin")
demo = os.path.join(build, "share/cabslot/examples/Demo 1x12.wav")
rows = []


def run(*command):
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout


def program(name):
    return os.path.join(programs, name)


def section(title):
    print(title, file=sys.stderr)
    rows.append(title)


def row(what, figure, unit, goal, is_met, detail=""):
    """`goal` in words; `figure` as it is compared with it."""
    rows.append((what, f"{figure:.2f}{unit}", goal, "yes" if is_met else "**no**", detail))


def percentile(values, share):
    values = sorted(values)
    return values[min(len(values) - 1, int(len(values) * share))]


def figures(text):
    """Lines of a name and numbers, by name."""
    found = defaultdict(list)
    for line in text.splitlines():
        name, *numbers = line.split()
        found[name].append([float(number) for number in numbers])
    return found


def firsts(lists):
    return [numbers[0] for numbers in lists]


def time_text(nanoseconds):
    return f"{nanoseconds / 1e3:.2f} µs" if nanoseconds < 1e6 else f"{nanoseconds / 1e6:.2f} ms"


# --- Conversion and codec ----------------------------------------------------------------------


def library_times():
    report = json.loads(
        run(program("bench_library"), "--benchmark_format=json", "--benchmark_min_time=0.02",
            "--benchmark_repetitions=15", "--benchmark_enable_random_interleaving=true"))
    times = defaultdict(list)
    for one in report["benchmarks"]:
        if "error_occurred" in one:
            sys.exit(f"{one['name']}: {one['error_message']}")
        if one["run_type"] == "iteration":
            times[one["name"].split("/repeats")[0]].append(one["cpu_time"])
    return {name: statistics.median(values) for name, values in times.items()}


def conversion_and_codec():
    section("Conversion: a WAV file in memory to the pedal's block; times faster than libsndfile "
            "with libsamplerate (linear)")
    times = library_times()
    ratios = []
    for rate in (44100, 48000, 88200, 96000):
        for bits in (8, 16, 24, 32):
            ours = times[f"conversion/{rate}/{bits}/ours"]
            theirs = times[f"conversion/{rate}/{bits}/theirs"]
            depth = "32-bit float" if bits == 32 else f"{bits} bits"
            ratios.append(theirs / ours)
            row(f"{rate} Hz, {depth}", ratios[-1], " x", "6 or more", ratios[-1] >= 6,
                f"{time_text(ours)} : {time_text(theirs)}")
    median = statistics.median(ratios)
    row("the median of the sixteen", median, " x", "10 or more", median >= 10)
    section("Codec: a stream of 522-byte frames; time of one pass of boost::crc over it")
    for name, what, goal in (("crc", "our CRC of every frame", 1.5),
                             ("receiving", "ring buffer, unpacker and CRC", 2.5)):
        ours, theirs = times[name + "/ours"], times[name + "/theirs"]
        row(what, ours / theirs, " x", f"{goal:g} or less", ours / theirs <= goal,
            f"{time_text(ours)} : {time_text(theirs)}")


# --- Files -------------------------------------------------------------------------------------


def write_wav(path, data_size):
    frame = bytes(i * 37 % 251 for i in range(6000))
    with open(path, "wb") as file:
        file.write(b"RIFF" + struct.pack("<I", 36 + data_size) + b"WAVEfmt ")
        file.write(struct.pack("<IHHIIHH", 16, 1, 1, 48000, 48000 * 3, 3, 24))
        file.write(b"data" + struct.pack("<I", data_size))
        piece = frame * 1000
        for start in range(0, data_size, len(piece)):
            file.write(piece[:data_size - start])


def alternately(count, ours, theirs):
    return figures(run(program("bench_process"), str(count), *ours, "--", *theirs))


def files(folder):
    section("Files: whole processes")
    short = os.path.join(folder, "short.wav")
    write_wav(short, 2000 * 3)
    inspect = (program("cabslotctl"), "inspect")
    found = alternately(300, (*inspect, short),
                   ("sox", short, "-r", "44100", os.path.join(folder, "out.wav"), "trim", "0",
                    "1024s"))
    ours, theirs = (statistics.median(firsts(found[who])) for who in ("ours", "theirs"))
    row("`cabslotctl inspect` of 2000 frames : `sox`", ours / theirs, " x", "under 0.5",
        ours / theirs < 0.5, f"{ours:.2f} ms : {theirs:.2f} ms")

    long = os.path.join(folder, "long.wav")
    write_wav(long, 500_000_000)
    found = alternately(9, (*inspect, long), ("cat", long))
    ours, theirs = (statistics.median(firsts(found[who])) for who in ("ours", "theirs"))
    row("`cabslotctl inspect` of 500 MB : `cat`", ours / theirs, " x", "1.3 or less",
        ours / theirs <= 1.3, f"{ours:.2f} ms : {theirs:.2f} ms")
    peak = max(memory for _, memory in found["ours"]) * 1024
    row("its peak memory : the file's size", peak / 5e8, " x", "1.1 or less", peak <= 5.5e8,
        f"{peak / 1e6:.1f} MB")
    os.remove(long)


def write_pack(folder, count):
    """`count` files of 2000 frames, no two of them the same."""
    os.mkdir(folder)
    first = os.path.join(folder, "0.wav")
    write_wav(first, 2000 * 3)
    with open(first, "rb") as file:
        whole = file.read()
    for i in range(1, count):
        with open(os.path.join(folder, f"{i}.wav"), "wb") as file:
            file.write(whole[:44] + struct.pack("<I", i) + whole[48:])


def write_cabinets(folder):
    """A folder of 800 times the IR that ships, no two of them the same."""
    pack = os.path.join(folder, "800")
    os.makedirs(pack, exist_ok=True)
    with open(demo, "rb") as file:
        whole = file.read()
    for i in range(800):
        with open(os.path.join(pack, f"{i}.wav"), "wb") as file:
            file.write(whole[:44] + struct.pack("<I", i) + whole[48:])
    return pack


def packs(folder):
    section("A folder of 10,000 files of 2000 frames, in the page cache; compared with libsndfile")
    found = {}
    for count in (1000, 10000):
        pack = os.path.join(folder, str(count))
        write_pack(pack, count)
        found[count] = alternately(15, (program("cabslotctl"), "inspect", pack),
                              (program("bench_read_files"), pack))
    ours, theirs = (statistics.median(firsts(found[10000][who])) for who in ("ours", "theirs"))
    row("`cabslotctl inspect FOLDER` : opening and reading the files", ours / 1000, " s",
        "1.0 s or less", ours <= 1000, f"{ours:.0f} ms : {theirs:.0f} ms")
    few, many = (max(memory for _, memory in found[count]["ours"]) for count in (1000, 10000))
    row("its memory for each file of the table", (many - few) / 9000, " KiB", "under 2",
        many - few < 18000, f"{many / 1024:.1f} MiB at most")


def prepared(folder):
    section("800 cabinets' IRs at 48 kHz in one call of `cabslotctl prepare`")
    pack, better = write_cabinets(folder), os.path.join(folder, "better")
    os.mkdir(better)
    files = sorted(os.path.join(pack, name) for name in os.listdir(pack))
    rates = []
    for _ in range(5):
        start = time.monotonic()
        run(program("cabslotctl"), "prepare", *files, "--into", better, "--force")
        rates.append(len(files) / (time.monotonic() - start))
    rate = statistics.median(rates)
    row("files a second", rate, "", "200 or more", rate >= 200,
        f"{min(rates):.0f} to {max(rates):.0f}")


@contextmanager
def running(*commands):
    """Runs the commands meanwhile."""
    processes = [subprocess.Popen(command) for command in commands]
    try:
        yield processes
    finally:
        for process in processes:
            process.kill()
            process.wait()


def all_cores_loaded():
    return running(*[["sh", "-c", "while :; do :; done"]] * os.cpu_count())


# --- The wire ----------------------------------------------------------------------------------


def gap_rows(when, found):
    gaps = firsts(found["gap"])
    median = statistics.median(gaps)
    late = percentile([abs(gap - 20) for gap in gaps], 0.99)
    row(f"between two frames, {when}", median, " ms", "20 ms", abs(median - 20) < 0.1,
        f"{min(gaps):.2f} to {max(gaps):.2f} ms")
    if when == "idle":
        row("99 % of them are off by at most", late, " ms", "2 ms or less", late <= 2)
    else:
        rows.append(("99 % of them are off by at most", f"{late:.2f} ms", "none", "", ""))


def wire():
    section("The wire: seen from the pedal's end of a Unix socket")
    uploads = (program("bench_wire"), "uploads", "40", demo)
    found = figures(run(*uploads))
    gap_rows("idle", found)
    took = firsts(found["upload"])
    row("upload, from the request to the last report", percentile(took, 0.99), " ms",
        "150 ms or less", percentile(took, 0.99) <= 150, f"median {statistics.median(took):.2f} ms")
    with all_cores_loaded():
        gap_rows("all cores loaded", figures(run(*uploads)))
    ends = firsts(figures(run(program("bench_wire"), "loads", "30", demo,
                              program("cabslotctl")))["exit"])
    row("from the confirmation to the end of `cabslotctl load`", percentile(ends, 0.99), " ms",
        "under 30 ms", percentile(ends, 0.99) < 30, f"median {statistics.median(ends):.2f} ms")


# --- The window --------------------------------------------------------------------------------


def window(folder):
    section("The window: compared with a Qt program with one label, on the same screen")
    os.environ.update(XDG_STATE_HOME=folder, CABSLOT_PEDAL="sim")
    os.environ.pop("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", None)  # as for most people
    ours, bare = defaultdict(list), defaultdict(list)
    for _ in range(15):
        for name, into in (("bench_bare_window", bare), ("cabslot", ours)):
            for what, numbers in figures(run(program("bench_window"), program(name))).items():
                into[what] += firsts(numbers)
    for what, figure, goal in (("from the start to the first painted frame", "first", 1.5),
                               ("from the start to painted names", "last", 2.0)):
        mine, its = statistics.median(ours[figure]), statistics.median(bare["first"])
        row(f"{what} : its first frame", mine / its, " x", f"{goal:g} or less", mine / its <= goal,
            f"{mine:.1f} ms : {its:.1f} ms")
    mine, its = statistics.median(ours["peak"]), statistics.median(bare["peak"])
    row("peak memory", mine / its, " x", "1.5 or less", mine / its <= 1.5,
        f"{mine / 1024:.1f} MiB : {its / 1024:.1f} MiB")
    idle = statistics.mean(ours["idle"])
    row("processor while idle, both timers running", idle, " %", "under 1 % of a core", idle < 1)


# --- The preview -------------------------------------------------------------------------------


def tone(path, seconds):
    with wave.open(path, "wb") as file:
        file.setparams((1, 2, 44100, 0, "NONE", ""))
        file.writeframes(bytes(i * 37 % 251 for i in range(2 * 44100 * seconds)))


@contextmanager
def sound_server(folder):
    """A PulseAudio of our own with a null output, t."""
    socket = os.path.join(folder, "sound")
    os.environ.update(PULSE_RUNTIME_PATH=folder, PULSE_SERVER=f"unix:{socket}")
    with running(["pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no",
                  "--log-level=0", "-L", "module-null-sink sink_name=t rate=44100 channels=1", "-L",
                  f"module-native-protocol-unix auth-anonymous=1 socket={socket}"]):
        while not os.path.exists(socket):
            time.sleep(0.05)
        yield
    os.remove(socket)


def preview(folder):
    section("The preview: 200 steps through a folder of 800 cabinets' IRs; PulseAudio, null "
            "output")
    pack = write_cabinets(folder)
    phrase = os.path.join(folder, "phrase.wav")
    tone(phrase, 10)
    with sound_server(folder):
        found = figures(run(program("bench_preview"), build, pack, phrase, "200"))
    for what, name, goal in (("from the key to the painted preview", "painted", 30),
                             ("from the key to the new IR's first sample", "heard", 50),
                             ("a ten-second phrase through an IR, its level matched", "rendered", 15)):
        times = firsts(found[name])
        row(f"99 % of them: {what}", percentile(times, 0.99), " ms", f"{goal} ms or less",
            percentile(times, 0.99) <= goal, f"median {statistics.median(times):.2f} ms")


# --- Gaps --------------------------------------------------------------------------------------


def silences(samples, shortest=88):
    """The lengths, in samples, of the silences (2 ms and longer) within the sound."""
    heard = [i for i, sample in enumerate(samples) if sample != 0]
    return [after - before for before, after in zip(heard, heard[1:]) if after - before > shortest]


def record(folder, phrase):
    """Plays the phrase through the demo IR; returns what the output got."""
    recording = os.path.join(folder, "recording")
    with open(recording, "wb") as file:
        recorder = subprocess.Popen(["parec", "-d", "t.monitor", "--rate=44100", "--channels=1",
                                     "--format=s16le"], stdout=file)
        run(program("cabslotctl"), "audition", demo, "--dry", phrase)
        recorder.terminate()
        recorder.wait()
    with open(recording, "rb") as file:
        data = file.read()
    return struct.unpack(f"<{len(data) // 2}h", data[:len(data) // 2 * 2])


def gaps(folder):
    section("Listening for 29 seconds; PulseAudio, null output")
    phrase = os.path.join(folder, "long.wav")
    tone(phrase, 29)
    for when, load, goal in (("idle", running, 0), ("all cores loaded", all_cores_loaded, 4)):
        with sound_server(folder), load():
            found = silences(record(folder, phrase))
        a_minute = len(found) * 60 / 29
        longest = max(found, default=0) / 44.1
        row(f"gaps a minute, {when}", a_minute, "", "none" if goal == 0 else f"{goal} or fewer",
            a_minute <= goal, f"the longest {longest:.0f} ms" if found else "")


# --- The table ---------------------------------------------------------------------------------


def processor():
    with open("/proc/cpuinfo", encoding="utf-8") as file:
        return re.search(r"model name\s*: (.*)", file.read()).group(1)


def table():
    lines = []
    for one in rows:
        if isinstance(one, str):
            lines += ["", f"**{one}**", "", "| what | result | goal | met | ours : theirs, or range |",
                      "|---|---|---|---|---|"]
        else:
            lines.append("| " + " | ".join(one) + " |")
    return "\n".join(lines)


def write():
    marker = "<!-- scripts/bench writes what follows -->\n"
    with open(output, encoding="utf-8") as file:
        kept = file.read().partition(marker)[0]
    machine = f"{processor()}, {os.cpu_count()} cores, {time.strftime('%Y-%m-%d')}."
    with open(output, "w", encoding="utf-8") as file:
        file.write(f"{kept}{marker}\n{machine}\n{table()}\n")
    print(table())


with tempfile.TemporaryDirectory() as work:
    conversion_and_codec()
    files(work)
    packs(work)
    prepared(work)
    wire()
    window(work)
    preview(work)
    gaps(work)
write()
