#!/usr/bin/env python3
"""house_rules.py [--linux EXE] [--windows EXE]

The rules of the house that a machine can see: white space, arrows between rooms, platform code in platform files, no
unfinished work, no words about papers that aren't in this house, and executables that need nothing beside them. The
last rule is checked for the executables that are named.

Prints 'ok RULE' or 'not ok RULE' with the places, and at the end 'N passed, N failed'; exits with 1 if a rule is broken.
"""

import argparse
import os
import re
import subprocess
import sys

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
SHOWN_PLACES = 20  # of a broken rule

# Which rooms a room may know, beside itself.
ARROWS = {
    'pattern': (),
    'script': ('pattern',),
    'lua': ('pattern',),
    'ruby': ('pattern',),
    'plush': (),
    'font': ('plush',),
    'audio': (),
    'ai': (),
    'startup': (),
    'bridge': ('lua', 'ruby', 'script'),
    'host': ('bridge', 'lua', 'ruby', 'script', 'plush', 'font', 'audio', 'ai', 'startup'),
}

PLATFORM_FILE = re.compile(r'(^|/)(windows|posix|sdl|entry)_[^/]*\.cpp$')

# One letter of each stands in brackets, so that this file doesn't break the rule it checks.
FOREIGN_WORDS = re.compile(r'\b(the|a) [s]pec\b|\b[s]pecifications?\b|\b[s]pec\.md\b|\b[Pp]arts? \d+\.\d+\b')
UNFINISHED = re.compile(r'\b([T]ODO|[F]IXME|[X]XX|[H]ACK)\b|GTEST_[S]KIP|\b[D]ISABLED_')

# What is part of every Windows, or of every Linux system that could start the program at all.
WINDOWS_LIBRARIES = {'advapi32.dll', 'gdi32.dll', 'kernel32.dll', 'msvcrt.dll', 'ntdll.dll', 'shell32.dll',
                     'user32.dll', 'winmm.dll'}
LINUX_LIBRARIES = {'ld-linux-x86-64.so.2', 'libc.so.6', 'libdl.so.2', 'libm.so.6', 'libpthread.so.0'}


def house_files():
    """What belongs to the house, committed or about to be: paths from its root."""
    listed = subprocess.run(['git', '-c', 'safe.directory=*', 'ls-files', '-z', '--cached', '--others',
                             '--exclude-standard'], cwd=ROOT, check=True, stdout=subprocess.PIPE).stdout
    names = sorted(name for name in listed.decode().split('\0') if name)
    return [name for name in names if os.path.isfile(os.path.join(ROOT, name))]


def read_text(name):
    """The text of a file, or None if it holds no text."""
    with open(os.path.join(ROOT, name), 'rb') as file:
        data = file.read()
    try:
        return None if b'\0' in data else data.decode()
    except UnicodeDecodeError:
        return None


class Rules:
    def __init__(self, arguments):
        self.arguments = arguments
        self.files = house_files()
        self.sources = [name for name in self.files if name.endswith(('.cpp', '.h'))]
        self.texts = {name: text for name in self.files if (text := read_text(name)) is not None}

    def lines_with(self, pattern, names):
        return ['%s:%d: %s' % (name, number, line.strip()) for name in names if name in self.texts
                for number, line in enumerate(self.texts[name].split('\n'), 1) if pattern.search(line)]

    # The rules. Each gives the places where it is broken.

    def white_space_is_as_clang_format_decides(self):
        run = subprocess.run(['clang-format', '--dry-run', '--Werror'] + self.sources, cwd=ROOT, stderr=subprocess.PIPE)
        complaints = run.stderr.decode('utf-8', 'replace').split('\n')
        places = sorted({line.split(':')[0] for line in complaints if ': error:' in line})
        return places or (complaints if run.returncode else [])

    def rooms_know_only_those_below(self):
        places = []
        for name in self.sources:
            match = re.match(r'src/(\w+)/', name)
            if not match:
                continue
            room = match.group(1)
            for included in re.findall(r'^\s*#\s*include\s*"(\w+)/', self.texts[name], re.M):
                if included in ARROWS and included != room and included not in ARROWS.get(room, ()):
                    places.append('%s: %s may not know %s' % (name, room, included))
            if room not in ARROWS:
                places.append('%s: a room that has no arrows yet' % name)
        return places

    def platforms_differ_in_platform_files_only(self):
        names = [name for name in self.sources if name.startswith('src/') and not PLATFORM_FILE.search(name)]
        return self.lines_with(re.compile(r'^\s*#\s*(if|ifdef|ifndef|elif)\b'), names)

    def nothing_is_left_unfinished(self):
        return self.lines_with(UNFINISHED, self.files)

    def nothing_refers_to_papers_outside_of_the_house(self):
        return [name for name in self.files if FOREIGN_WORDS.search(name)] + self.lines_with(FOREIGN_WORDS, self.files)

    def the_windows_executable_stands_alone(self):
        output = subprocess.run(['x86_64-w64-mingw32-objdump', '-p', self.arguments.windows], check=True,
                                stdout=subprocess.PIPE).stdout.decode()
        needed = re.findall(r'DLL Name: (\S+)', output)
        return [name for name in needed if name.lower() not in WINDOWS_LIBRARIES] if needed else ['no imports read']

    def the_linux_executable_stands_alone(self):
        output = subprocess.run(['objdump', '-p', self.arguments.linux], check=True,
                                stdout=subprocess.PIPE).stdout.decode()
        needed = re.findall(r'NEEDED\s+(\S+)', output)
        return [name for name in needed if name not in LINUX_LIBRARIES] if needed else ['no libraries read']

    def run(self):
        rules = [self.white_space_is_as_clang_format_decides, self.rooms_know_only_those_below,
                 self.platforms_differ_in_platform_files_only, self.nothing_is_left_unfinished,
                 self.nothing_refers_to_papers_outside_of_the_house]
        if self.arguments.linux:
            rules.append(self.the_linux_executable_stands_alone)
        if self.arguments.windows:
            rules.append(self.the_windows_executable_stands_alone)
        failed = 0
        for rule in rules:
            try:
                places = rule()
            except (OSError, subprocess.CalledProcessError) as fault:
                places = [str(fault)]
            failed += bool(places)
            print('%s %s' % ('not ok' if places else 'ok', rule.__name__))
            for place in places[:SHOWN_PLACES]:
                print('    ' + place)
            if len(places) > SHOWN_PLACES:
                print('    ... and %d more' % (len(places) - SHOWN_PLACES))
        print('%d passed, %d failed' % (len(rules) - failed, failed))
        return 1 if failed else 0


def main():
    parser = argparse.ArgumentParser(description='Checks the rules of the house that a machine can see.')
    parser.add_argument('--linux', metavar='EXE', help='the Linux executable')
    parser.add_argument('--windows', metavar='EXE', help='the Windows executable')
    sys.exit(Rules(parser.parse_args()).run())


if __name__ == '__main__':
    main()
