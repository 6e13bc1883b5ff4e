#!/usr/bin/env python3
"""Runs the same small programs in the engine and in its peers, alternating, and prints the ratios.

    bench/script/programs.py [--exe PATH] [--rounds N] [PROGRAM...]

Every program stands in programs/ once per language and prints the same text in all of them; a program whose output
differs is not timed but reported. Each round runs every engine once, so that a busy machine slows all of them alike;
the time of an engine is the processor time of its fastest round, and its start-up (an empty program) is taken off.
"""
import argparse
import math
import os
import shutil
import subprocess
import sys
import tempfile

HERE = os.path.dirname(os.path.abspath(__file__))
PROGRAMS = os.path.join(HERE, 'programs')
DEFAULT_EXE = os.path.join(HERE, '..', '..', 'build', 'linux', 'game', 'bin', 'Velmaris')


def timed(command, directory=None):
    """Processor seconds and output of one run of a command."""
    child = subprocess.Popen(command, stdout=subprocess.PIPE, stdin=subprocess.DEVNULL, cwd=directory)
    output = child.stdout.read().decode().strip()
    child.stdout.close()
    _, status, usage = os.wait4(child.pid, 0)
    child.returncode = os.waitstatus_to_exitcode(status)
    if child.returncode != 0:
        raise subprocess.CalledProcessError(child.returncode, command)
    return usage.ru_utime + usage.ru_stime, output


class Engine:
    """One language: how to start a program file, and the suffix of its programs."""

    def __init__(self, name, suffix, command):
        self.name, self.suffix, self.command = name, suffix, command

    def run(self, path):
        """Processor seconds and output of one run."""
        return timed(self.command + [path])


class Velmaris(Engine):
    """The engine runs a game directory, so the program becomes the game script of a throw-away one."""

    def __init__(self, exe):
        super().__init__('velmaris', '.os', [])
        self.root = tempfile.mkdtemp(prefix='bench')
        for folder in ('bin', 'Resources/package', 'Resources/scripts', 'Resources/volatile', 'Libraries'):
            os.makedirs(os.path.join(self.root, folder))
        self.exe = shutil.copy(exe, os.path.join(self.root, 'bin'))
        open(os.path.join(self.root, 'Resources/package/graphics.os'), 'w').close()

    def run(self, path):
        shutil.copy(path, os.path.join(self.root, 'Resources/scripts/visual-novel.os'))
        return timed([self.exe], os.path.dirname(self.exe))


def available(name, suffix, command):
    return [Engine(name, suffix, command)] if shutil.which(command[0]) else []


def start_up(engine, rounds):
    with tempfile.NamedTemporaryFile(suffix=engine.suffix) as empty:
        return min(engine.run(empty.name)[0] for _ in range(rounds))


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument('--exe', default=DEFAULT_EXE)
    parser.add_argument('--rounds', type=int, default=5)
    parser.add_argument('programs', nargs='*')
    options = parser.parse_args()

    ours = Velmaris(options.exe)
    peers = (available('lua5.4', '.lua', ['lua5.4']) + available('luajit -joff', '.lua', ['luajit', '-joff']) +
             available('python3', '.py', ['python3']))
    engines = [ours] + peers
    names = options.programs or sorted(f[:-3] for f in os.listdir(PROGRAMS) if f.endswith('.os'))
    base = {engine: start_up(engine, options.rounds) for engine in engines}

    print('| program | velmaris ms | ' + ' | '.join('%s ms | ratio' % peer.name for peer in peers) + ' |')
    print('|---' * (2 + 2 * len(peers)) + '|')
    logs = {peer: [] for peer in peers}
    failed = False
    for name in names:
        best, outputs = {}, {}
        for _ in range(options.rounds):
            for engine in engines:
                seconds, outputs[engine] = engine.run(os.path.join(PROGRAMS, name + engine.suffix))
                best[engine] = min(best.get(engine, math.inf), max(seconds - base[engine], 1e-4))
        if len(set(outputs.values())) != 1:
            print('%s: outputs differ: %s' % (name, {e.name: o for e, o in outputs.items()}), file=sys.stderr)
            failed = True
            continue
        cells = ['%.1f' % (best[ours] * 1000)]
        for peer in peers:
            ratio = best[ours] / best[peer]
            logs[peer].append(math.log(ratio))
            cells += ['%.1f' % (best[peer] * 1000), '%.2f' % ratio]
        print('| %s | %s |' % (name, ' | '.join(cells)))
    means = ' | '.join(' | %.2f' % math.exp(sum(v) / max(len(v), 1)) for v in logs.values())
    print('| geometric mean | | %s |' % means)
    shutil.rmtree(ours.root)
    sys.exit(1 if failed else 0)


if __name__ == '__main__':
    main()
