#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Turns the message catalogues (one .po file per language) into one C++ file of sorted constant tables.

A catalogue's msgctxt is the message number. English is the source language: the msgid is its text. Every problem of
every catalogue is reported with file and line before the build fails: a number or placeholder that is missing or
superfluous, a text given twice, empty, or marked fuzzy, a translation of an English text that has changed since."""
import argparse
import ast
import pathlib
import re
import subprocess
import sys

SOURCE_LANGUAGE = "en"
PLACEHOLDER = re.compile(r"%[A-Za-z]+[0-9]*")
CONTEXT_KEYWORD, ID_KEYWORD, TEXT_KEYWORD = "msgctxt", "msgid", "msgstr"


class Entry:
    def __init__(self, line: int):
        self.line = line
        self.fuzzy = False
        self.strings: dict[str, str] = {}

    @property
    def is_header(self) -> bool:
        return CONTEXT_KEYWORD not in self.strings and self.strings.get(ID_KEYWORD) == ""


class Problems:
    def __init__(self):
        self.count = 0

    def report(self, file: pathlib.Path, line: int, text: str) -> None:
        self.count += 1
        print(f"{file}:{line}: error: {text}", file=sys.stderr)


def read_placeholders(file: pathlib.Path, problems: Problems) -> dict[int, list[str]]:
    """Lines of a number and its placeholders; '-' stands for none."""
    table: dict[int, list[str]] = {}
    for line, text in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
        words = text.split("#")[0].split()
        if not words:
            continue
        names = [] if words[1:] == ["-"] else sorted(words[1:])
        if not words[0].isdecimal() or int(words[0]) > 0xFFFF or len(words) == 1:
            problems.report(file, line, "expected a message number up to 65535 and its placeholders, or '-' for none")
        elif int(words[0]) in table:
            problems.report(file, line, f"message {words[0]} stands here twice")
        elif any(not PLACEHOLDER.fullmatch(name) for name in names) or len(set(names)) != len(names):
            problems.report(file, line, f"message {words[0]}: these are not distinct placeholders")
        else:
            table[int(words[0])] = names
    return table


def read_entries(file: pathlib.Path) -> list[Entry]:
    """The entries of a catalogue that msgfmt has accepted."""
    entries: list[Entry] = []
    current, keyword, fuzzy = None, "", False
    for number, raw in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
        line = raw.strip()
        if line.startswith("#"):
            fuzzy = fuzzy or (line.startswith("#,") and "fuzzy" in line)
            continue
        word, _, rest = line.partition(" ")
        if word in (CONTEXT_KEYWORD, ID_KEYWORD, TEXT_KEYWORD):
            begins = word == CONTEXT_KEYWORD or (word == ID_KEYWORD and keyword != CONTEXT_KEYWORD)
            if begins:
                current = Entry(number)
                current.fuzzy, fuzzy = fuzzy, False
                entries.append(current)
            keyword = word
            current.strings[keyword] = ast.literal_eval(rest)
        elif line.startswith('"'):
            current.strings[keyword] += ast.literal_eval(line)
    return entries


def read_catalogue(file: pathlib.Path, language: str, expected: dict[int, list[str]],
                   problems: Problems) -> dict[int, tuple[str, str, int]]:
    """Number to text, English text, line."""
    texts: dict[int, tuple[str, str, int]] = {}
    for entry in read_entries(file):
        if entry.is_header:
            continue
        context = entry.strings.get(CONTEXT_KEYWORD, "")
        english = entry.strings[ID_KEYWORD]
        text = entry.strings.get(TEXT_KEYWORD, "")
        if not text and language == SOURCE_LANGUAGE:
            text = english

        if not context.isdecimal() or int(context) not in expected:
            problems.report(file, entry.line, f"msgctxt '{context}' is not a number of the placeholder table")
            continue
        number = int(context)
        found = sorted(PLACEHOLDER.findall(text))
        if number in texts:
            problems.report(file, entry.line, f"message {number} stands here twice")
        elif not text:
            problems.report(file, entry.line, f"message {number} has no text")
        elif entry.fuzzy:
            problems.report(file, entry.line, f"message {number} is marked fuzzy: the translation must be looked at")
        elif found != expected[number]:
            problems.report(file, entry.line, f"message {number} must hold {' '.join(expected[number]) or 'none'} "
                                              f"once each, but holds {' '.join(found) or 'none'}")
        texts[number] = (text, english, entry.line)
    for number in sorted(expected.keys() - texts.keys()):
        problems.report(file, 1, f"message {number} is missing")
    return texts


def literal(text: str) -> str:
    escapes = {"\\": "\\\\", '"': '\\"', "\n": "\\n", "\t": "\\t"}
    return '"' + "".join(escapes.get(character, character) for character in text) + '"'


def generate(catalogues: dict[str, dict[int, tuple[str, str, int]]]) -> str:
    languages = sorted(catalogues)
    lines = ["// Generated from the message catalogues; changes here are lost.",
             '#include "embedded/MessageTable.h"', "", "#include <array>", "", "namespace qor::embedded {",
             "namespace {", ""]
    for language in languages:
        rows = sorted(catalogues[language].items())
        lines.append(f"constexpr std::array<MessageRow, {len(rows)}> k_{language}{{{{")
        lines += [f"    {{{number}, {literal(text)}}}," for number, (text, _, _) in rows]
        lines += ["}};", ""]
    names = ", ".join(f'"{language}"' for language in languages)
    lines += [f"constexpr std::array<std::string_view, {len(languages)}> kLanguages{{{{{names}}}}};", "",
              "}  // namespace", "",
              "std::span<const MessageRow> messageRows(std::string_view isoLanguage) {",
              '    const std::string_view language = isoLanguage.substr(0, isoLanguage.find_first_of("-_"));']
    lines += [f'    if (language == "{language}") return k_{language};' for language in languages
              if language != SOURCE_LANGUAGE]
    lines += [f"    return k_{SOURCE_LANGUAGE};", "}", "",
              "std::span<const std::string_view> messageLanguages() { return kLanguages; }", "",
              "}  // namespace qor::embedded", ""]
    return "\n".join(lines)


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--msgfmt", default="msgfmt")
    parser.add_argument("--placeholders", type=pathlib.Path, required=True)
    parser.add_argument("--output", type=pathlib.Path, required=True)
    parser.add_argument("catalogues", type=pathlib.Path, nargs="+")
    options = parser.parse_args()

    for file in options.catalogues:
        if subprocess.run([options.msgfmt, "-c", "-o", "/dev/null", str(file)]).returncode != 0:
            return 1
    problems = Problems()
    expected = read_placeholders(options.placeholders, problems)
    catalogues = {file.stem: read_catalogue(file, file.stem, expected, problems) for file in options.catalogues}
    if SOURCE_LANGUAGE not in catalogues:
        problems.report(options.placeholders.parent / f"{SOURCE_LANGUAGE}.po", 1, "the source language is missing")
    for file in options.catalogues:
        for number, (_, english, line) in catalogues[file.stem].items():
            source = catalogues.get(SOURCE_LANGUAGE, {}).get(number)
            if source and source[1] != english:
                problems.report(file, line, f"message {number} translates another English text: \"{english}\"")
    if problems.count:
        return 1
    options.output.parent.mkdir(parents=True, exist_ok=True)
    options.output.write_text(generate(catalogues), encoding="utf-8")
    return 0


if __name__ == "__main__":
    sys.exit(main())
