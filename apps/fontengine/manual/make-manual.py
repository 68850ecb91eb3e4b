#!/usr/bin/env python3
"""Writes the manual page of the tool: a frame of prose, filled with what the tool says about itself.

    make-manual.py TOOL FRAME OUTPUT.gz

Each sub-command, with its arguments, its options and the lines below them, comes from `TOOL --help` and
`TOOL SUB --help`, so that none can be forgotten.
"""
import gzip
import re
import subprocess
import sys

ENTRY = re.compile(r"  (\S.*?)(?:\s{2,}|(?<= REQUIRED) )(\S.*)")


def ask(*command):
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout


def read_entries(help_text, section):
    """(name, description) of each line below `section:`."""
    help_text = re.sub(r"\n {10,}(?=\S)", "  ", help_text)  # the description of a long name has a line of its own
    match = re.search(rf"^{section}:\n((?:  .*\n)*)", help_text, re.MULTILINE)
    return [ENTRY.fullmatch(line).groups() for line in match[1].splitlines()] if match else []


def escape(text):
    text = text.replace("\\", "\\e").replace("-", "\\-").replace("'", "\\(aq").replace('"', "\\(dq")
    return "\\&" + text if text.startswith(".") else text


def make_heads(name):
    """The option as the manual shows it: the names in bold, the rest as it is."""
    names, _, value = name.partition(" ")
    value = value.replace("REQUIRED", "(required)")
    heads = ", ".join(f"\\fB{escape(option)}\\fR" for option in names.split(","))
    return heads + (f" {escape(value)}" if value else "")


def list_entries(entries):
    return "".join(f".TP\n{make_heads(name)}\n{escape(text)}\n" for name, text in entries)


def read_usage(help_text):
    """The name of the command and what may follow it."""
    return re.search(r"^Usage: fontengine (\S+) (.*)$", help_text, re.MULTILINE).groups()


def read_footer(help_text):
    """The lines below the options."""
    return re.search(r"^Options:\n(?:  .*\n)*\n(.*)", help_text, re.MULTILINE | re.DOTALL)[1].splitlines()


def make_synopsis(help_text):
    name, arguments = read_usage(help_text)
    return f".B fontengine {escape(name)}\n{escape(arguments)}"


def describe_command(text, help_text):
    usage = " ".join(read_usage(help_text))
    entries = read_entries(help_text, "Positionals") + read_entries(help_text, "Options")
    footer = [".PP", *map(escape, lines)] if (lines := read_footer(help_text)) else []
    return f".SS {escape(usage)}\n{escape(text)}.\n{list_entries(entries)}" + "".join(
        line + "\n" for line in footer)


def make_manual(tool, frame):
    general = ask(tool, "--help")
    commands = [(text, ask(tool, name, "--help")) for name, text in read_entries(general, "Subcommands")]
    filling = {
        "version": ask(tool, "--version").strip(),
        "synopsis": "\n.br\n".join(make_synopsis(help_text) for _, help_text in commands),
        "options": list_entries(read_entries(general, "Options")).strip(),
        "commands": "".join(describe_command(*command) for command in commands).strip(),
    }
    return re.sub(r"@(\w+)@", lambda match: filling[match[1]], frame)


def main():
    tool, frame, output = sys.argv[1:]
    with open(frame, encoding="utf-8") as file:
        manual = make_manual(tool, file.read())
    with open(output, "wb") as file, gzip.GzipFile("", "wb", 9, file, 0) as packed:
        packed.write(manual.encode())


if __name__ == "__main__":
    main()
