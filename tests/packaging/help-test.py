#!/usr/bin/python3
"""Compares --help with the manual pages and the shells' completions: the same options and commands.

Usage: help-test.py PACKAGING PROGRAM ...
"""
import os
import re
import subprocess
import sys

PACKAGING, PROGRAMS = sys.argv[1], sys.argv[2:]

# Asks bash for the completions of the last of the words given.
ASK_BASH = """
. "$1"; shift
compopt() { :; }
COMP_WORDS=("$@") COMP_CWORD=$(($# - 1))
$(complete -p "$1" | sed 's/.*-F \\([^ ]*\\).*/\\1/') "$1" "${!#}" "${COMP_WORDS[COMP_CWORD - 1]}"
printf '%s\\n' "${COMPREPLY[@]}"
"""
faults = []


def expect_same(where, told, helped):
    for name in sorted(set(told) ^ set(helped)):
        faults.append(f"{where}: {name} is " + ("not documented" if name in helped else "not in --help"))


def read(name):
    with open(os.path.join(PACKAGING, name), encoding="utf-8") as file:
        return file.read()


def output(*command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout


def section(text, heading):
    """The first words of the lines below `heading:`."""
    body = re.search(rf"^{heading}:\n((?:  .*\n)+)", text, re.M)
    return re.findall(r"^  ([\w-]\S*)", body[1], re.M) if body else []


def options(text):
    return {o for words in section(text, "Options") for o in words.split(",")}


def long_options(text):
    return {name for name in re.findall(r"(?<![\w-])--[a-z][a-z-]+", text)}


def commands_of(program, *command):
    """Each command, as a tuple of words, with its help."""
    text = output(program, *command, "--help")
    yield command, text
    for sub in section(text, "Subcommands"):
        yield from commands_of(program, *command, sub)


def check_bash(name, command, text, whole):
    def offered(*words):
        return output("bash", "-c", ASK_BASH, "bash", bash_file, name, *command, *words).split()

    bash_file = os.path.join(PACKAGING, "completion/cabslot.bash")
    where = " ".join(("bash", name, *command))
    known = options(text) | (options(whole) - {"--version"} if command else set())
    expect_same(where, offered("--"), known - {"-h"})
    if section(text, "Subcommands"):
        expect_same(where, offered(""), section(text, "Subcommands"))
    if section(text, "Faults"):
        expect_same(where, offered("--fault", ""), section(text, "Faults"))


def all_options(helps):
    return set().union(*map(options, helps.values())) - {"-h"}


helps_of = {program: dict(commands_of(program)) for program in PROGRAMS}
everything = set().union(*map(all_options, helps_of.values()))
for program, helps in helps_of.items():
    name = os.path.basename(program)
    whole = helps[()]
    known = all_options(helps)
    words = {" ".join(c) for c in helps if c} | set(section(whole, "Faults"))

    page = re.sub(r"\\f.", "", read(f"man/{name}.1").replace("\\-", "-"))
    others = everything - known  # a page may speak of another program's
    expect_same(f"man {name}", long_options(page) - others, known)
    fish = read(f"completion/{name}.fish")
    expect_same(f"fish {name}", {"--" + o for o in re.findall(r"(?<!set) -l ([a-z-]+)", fish)}, known)
    for word in words:
        if word not in page:
            faults.append(f"man {name}: {word} is not documented")
        for shell, text in ("fish", fish), ("zsh", read("completion/_cabslot")):
            if not re.search(rf"(?<![\w-]){word.split()[-1]}(?![\w-])", text):
                faults.append(f"{shell} {name}: {word} is not documented")
    for command, text in helps.items():
        check_bash(name, command, text, whole)

    version = output(program, "--version").split()
    if version[0] != name:
        faults.append(f"{name} --version says {version}")
    for file, pattern in (("debian/changelog", r"^cabslot \((.+)-1\)"),
                          ("desktop/org.cabslot.Cabslot.metainfo.xml", r'<release version="(.+?)"')):
        if re.search(pattern, read(file), re.M)[1] != version[1]:
            faults.append(f"{file}: the newest version is not {version[1]}")

# What a set is, for every desktop.
TYPE = "application/x-cabslot-set"
desktop, metainfo, mime = (read(f"desktop/org.cabslot.Cabslot.{end}") for end in ("desktop", "metainfo.xml", "mime.xml"))
expect_same("desktop entry", re.findall("^MimeType=(.*);$", desktop, re.M), [TYPE])
expect_same("metainfo", re.findall("<mediatype>(.*)</mediatype>", metainfo), [TYPE])
expect_same("MIME type", re.findall(r'type="(.*-set)"|pattern="\*(.*)"', mime), [(TYPE, ""), ("", ".cabset")])
expect_same("desktop entry", re.findall("^Exec=(.*)$", desktop, re.M), ["cabslot %f"])
expect_same("icon", re.findall('icon name="(.*)"', mime), re.findall(r"mimetypes (.*)\)", read("CMakeLists.txt")))
expect_same("installer", re.findall(r'Classes\\([.\w]+)"', read("windows/installer.nsi")), ["Cabslot.Set", ".cabset"])

cabslotctl = next(program for program in PROGRAMS if program.endswith("cabslotctl"))
phrases = r"The phrase: ((?:\w+, )+)or"
for shell, offer in ("cabslotctl.fish", r"-l dry .* -a '(.*?)'"), ("_cabslot", r"phrase:\((.*?)\)"):
    helped = re.search(phrases, " ".join(output(cabslotctl, "audition", "--help").split()))[1]
    expect_same(shell, re.search(offer, read("completion/" + shell))[1].split(), helped.replace(",", "").split())

zsh = read("completion/_cabslot").replace("{-h,--help}", "--help")
expect_same("zsh", long_options(zsh), everything)
sys.exit("\n".join(faults) or 0)
