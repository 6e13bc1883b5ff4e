#!/usr/bin/env python3
"""run_cases.py --exe PATH [--wine] [--wineprefix DIR] [--jobs N] [--update] [TOPIC[/NAME]...]

Runs game scripts in the engine as a player would run them and compares what they print. A case is

    cases/TOPIC/NAME.os         the game script
    cases/TOPIC/NAME.expected   its standard output, byte for byte
    cases/TOPIC/NAME.status     its exit status, if that isn't 0
    cases/TOPIC/NAME.stderr     its error stream, byte for byte; without this file the stream isn't looked at
    cases/TOPIC/NAME.files/     files that are laid into the game's directory

Each case gets a game directory of its own, which is thrown away afterwards; in what the engine prints its path reads
<ROOT>. There is no screen, no sound and no standard input. With --wine the executable is the Windows one, and the same
bytes are expected of it. With --update the expected files are rewritten with what the engine gives: read the
difference before you commit it.

Exits with 1 if a case failed. The last line reads 'N passed, N failed'.
"""

import argparse
import concurrent.futures
import difflib
import os
import re
import shutil
import subprocess
import sys
import tempfile

CASES = os.path.join(os.path.dirname(os.path.abspath(__file__)), 'cases')
GAME_FOLDERS = ('bin', 'Libraries', 'Resources/package', 'Resources/scripts', 'Resources/volatile')
PATIENCE = 120  # seconds that a case may take
DIFFERENCE_LINES = 24  # lines of a difference that are shown
DISPLAYS = ('DISPLAY', 'WAYLAND_DISPLAY')


class Case:
    """A script and what is expected of it."""

    def __init__(self, name):
        self.name = name  # TOPIC/NAME
        self.base = os.path.join(CASES, *name.split('/'))

    def read(self, suffix):
        """The bytes of one of the case's files, or None."""
        try:
            with open(self.base + suffix, 'rb') as file:
                return file.read()
        except FileNotFoundError:
            return None

    def write(self, suffix, data):
        """Replaces one of the case's files; None removes it."""
        if data is not None:
            with open(self.base + suffix, 'wb') as file:
                file.write(data)
        elif os.path.exists(self.base + suffix):
            os.remove(self.base + suffix)

    def lay_out(self, root, executable):
        """Makes the game directory; gives the path of its executable."""
        for folder in GAME_FOLDERS:
            os.makedirs(os.path.join(root, folder))
        with open(os.path.join(root, 'Resources/package/graphics.os'), 'wb'):
            pass
        if os.path.isdir(self.base + '.files'):
            shutil.copytree(self.base + '.files', root, dirs_exist_ok=True)
        shutil.copyfile(self.base + '.os', os.path.join(root, 'Resources/scripts/visual-novel.os'))
        target = os.path.join(root, 'bin', os.path.basename(executable))
        try:
            os.link(executable, target)
        except OSError:  # another file system
            shutil.copy(executable, target)
        return target


class Outcome:
    """What a run gave."""

    def __init__(self, status, output, errors):
        self.status, self.output, self.errors = status, output, errors


def all_cases():
    names = []
    for topic in sorted(os.listdir(CASES)):
        folder = os.path.join(CASES, topic)
        if os.path.isdir(folder):
            names += [topic + '/' + file[:-3] for file in sorted(os.listdir(folder)) if file.endswith('.os')]
    return names


def chosen_cases(wanted):
    """The cases of these names and topics; all without any. A name that fits none is a fault of the caller."""
    names = all_cases()
    for one in wanted:
        if not any(name == one or name.startswith(one + '/') for name in names):
            sys.exit('no case is called %r' % one)
    return [Case(name) for name in names
            if not wanted or any(name == one or name.startswith(one + '/') for one in wanted)]


def without_path(data, root):
    """The bytes with the game's directory in all its spellings as <ROOT>."""
    path = root.encode()
    spellings = [b'[Zz]:' + re.escape(path), b'[Zz]:' + re.escape(path.replace(b'/', b'\\')), re.escape(path)]
    return re.sub(b'|'.join(spellings), b'<ROOT>', data)


class Runner:
    def __init__(self, arguments):
        self.arguments = arguments
        self.executable = os.path.abspath(arguments.exe)
        self.environment = dict(os.environ, SDL_VIDEODRIVER='dummy', SDL_AUDIODRIVER='dummy')
        for name in DISPLAYS:
            self.environment.pop(name, None)
        self.wineserver = None
        if arguments.wine:
            self.start_wine()

    def start_wine(self):
        """Makes Wine's directory if need be, and keeps its server alive: each case would start one otherwise."""
        self.environment['WINEDEBUG'] = '-all'
        self.environment['WINEDLLOVERRIDES'] = 'mscoree=;mshtml='  # no offers to download what games don't need
        if self.arguments.wineprefix:
            prefix = os.path.abspath(self.arguments.wineprefix)
            self.environment['WINEPREFIX'] = prefix
            os.makedirs(os.path.dirname(prefix), exist_ok=True)
        self.wine_tool('wineserver', '-p')
        self.wineserver = True
        self.wine_tool('wineboot', '--update')

    def wine_tool(self, *command):
        subprocess.run(command, env=self.environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL)

    def close(self):
        if self.wineserver:
            self.wine_tool('wineserver', '-k')
            self.wine_tool('wineserver', '-w')

    def play(self, case):
        """Runs a case; the status is a text if it didn't end by itself."""
        root = os.path.realpath(tempfile.mkdtemp(prefix='velmaris-case-'))
        try:
            command = [case.lay_out(root, self.executable)]
            if self.arguments.wine:
                command.insert(0, 'wine')
            try:
                run = subprocess.run(command, cwd=os.path.join(root, 'bin'), env=self.environment, timeout=PATIENCE,
                                     stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
                status, output, errors = str(run.returncode), run.stdout, run.stderr
            except subprocess.TimeoutExpired as late:
                status, output, errors = 'none within %d s' % PATIENCE, late.stdout or b'', late.stderr or b''
            return Outcome(status, without_path(output, root), without_path(errors, root))
        finally:
            shutil.rmtree(root, ignore_errors=True)

    def differences(self, case, outcome):
        """The lines that tell what is wrong; none if nothing is."""
        lines = []
        status = (case.read('.status') or b'0').decode().strip()
        if outcome.status != status:
            lines.append('    the exit status is %s, not %s' % (outcome.status, status))
        expected = case.read('.expected')
        if expected is None:
            lines.append('    there is no %s.expected' % case.name)
        elif outcome.output != expected:
            lines += difference(expected, outcome.output, 'standard output')
        expected = case.read('.stderr')
        if expected is not None and outcome.errors != expected:
            lines += difference(expected, outcome.errors, 'error stream')
        elif lines and expected is None and outcome.errors:
            lines += ['    the error stream reads'] + ['    | ' + line for line in shown(outcome.errors)[-8:]]
        return lines

    def update(self, case, outcome):
        case.write('.expected', outcome.output)
        case.write('.status', None if outcome.status == '0' else outcome.status.encode() + b'\n')
        case.write('.stderr', outcome.errors or None)

    def run(self):
        failed = 0
        cases = chosen_cases(self.arguments.cases)
        with concurrent.futures.ThreadPoolExecutor(self.arguments.jobs) as workers:
            for case, outcome in zip(cases, workers.map(self.play, cases)):
                if self.arguments.update:
                    self.update(case, outcome)
                lines = self.differences(case, outcome)
                if lines:
                    failed += 1
                    print('\n'.join(['not ok ' + case.name] + lines), flush=True)
        print('%d passed, %d failed' % (len(cases) - failed, failed))
        return 1 if failed else 0


def shown(data):
    """Lines for a reader: what isn't plain text is escaped."""
    return [line.decode('utf-8', 'backslashreplace').replace('\r', '\\r').replace('\0', '\\0')
            for line in data.split(b'\n')]


def difference(expected, got, name):
    lines = list(difflib.unified_diff(shown(expected), shown(got), 'expected ' + name, 'got', lineterm='', n=1))
    more = len(lines) - DIFFERENCE_LINES
    if more > 0:
        lines = lines[:DIFFERENCE_LINES] + ['... and %d more lines' % more]
    return ['    ' + line for line in lines]


def main():
    parser = argparse.ArgumentParser(description='Runs game scripts in the engine and compares what they print.')
    parser.add_argument('--exe', required=True, help='the engine')
    parser.add_argument('--wine', action='store_true', help='run it under Wine')
    parser.add_argument('--wineprefix', default=os.environ.get('WINEPREFIX'), help="Wine's directory")
    parser.add_argument('--jobs', type=int, default=2, help='cases that run at the same time')
    parser.add_argument('--update', action='store_true', help='rewrite the expected files')
    parser.add_argument('cases', nargs='*', metavar='TOPIC[/NAME]')
    runner = Runner(parser.parse_args())
    try:
        sys.exit(runner.run())
    finally:
        runner.close()


if __name__ == '__main__':
    main()
