#!/usr/bin/env python3
"""ostrelc_test.py --exe PATH

Runs ostrelc on small scripts and broken files and compares what it writes. Prints 'ok NAME' or 'not ok NAME: detail'
for each check; exits with 1 if one failed.
"""

import argparse
import os
import subprocess
import sys
import tempfile

USAGE = ('usage: ostrelc INPUT.os OUTPUT.osb [--source NAME]\n'
         '       ostrelc --dump FILE.osb\n'
         '       ostrelc --help\n')

SCRIPT = r'''@@ every kind of block
local x = 1
function f(a)
    if a == 1
        return "one\t\"q\""
    elseif a ; x += 1
    else
    end
end
for i = 1, 3
    repeat
        print(f(i))
    until true
end
while flase
    break
end
for k, v in pairs({1})
end
nest("la\"b")
end
'''

DUMP = r'''bytecode, version 60
source directory "game"
source path "game/every.os"

lines: 23
  0: at 1 ""
  1: at 2 "local x = 1"
      "local" "x" "=" "1"
  2: at 3 "function f(a)"
      "function" "f" "(" "a" ")"
  3: at 4 "if a == 1"
      "if" "a" "==" "1"
  4: at 5 "return \"one\\t\\\"q\\\"\""
      "return" "\"one\\t\\\"q\\\"\""
  5: at 6 "elseif a"
      "elseif" "a"
  6: at 6 "x += 1"
      "x" "+=" "1"
  7: at 7 "else"
      "else"
  8: at 8 "end"
      "end"
  9: at 9 "end"
      "end"
  10: at 10 "for i = 1, 3"
      "for" "i" "=" "1" "," "3"
  11: at 11 "repeat"
      "repeat"
  12: at 12 "print(f(i))"
      "print" "(" "f" "(" "i" ")" ")"
  13: at 13 "until true"
      "until" "true"
  14: at 14 "end"
      "end"
  15: at 15 "while flase"
      "while" "flase"
  16: at 16 "break"
      "break"
  17: at 17 "end"
      "end"
  18: at 18 "for k, v in pairs({1})"
      "for" "k" "," "v" "in" "pairs" "(" "{" "1" "}" ")"
  19: at 19 "end"
      "end"
  20: at 20 "nest(\"la\\\"b\")"
      "nest" "(" "\"la\\\"b\"" ")"
  21: at 21 "end"
      "end"
  22: at 22 ""

chunks: 10
  0: 6 instructions from 6, declares locals
      6 OpAssignFast line 1
      7 OpFunction function 0
      8 OpForNumeric numeric for 0
      9 OpWhile while loop 0
      10 OpForGeneric generic for 0
      11 OpNest nest block 0
  1: 1 instruction from 2, nested
      2 OpIf if group 0
  2: 1 instruction from 0, nested
      0 OpReturn line 4
  3: 1 instruction from 1, nested
      1 OpAssignFast line 6
  4: 0 instructions from 2, nested
  5: 1 instruction from 4, nested
      4 OpRepeat repeat loop 0
  6: 1 instruction from 3, nested
      3 OpLine line 12
  7: 1 instruction from 5, nested
      5 OpBreak line 16
  8: 0 instructions from 6, nested
  9: 0 instructions from 6, nested

if groups: 1
  0: 3 branches
      if, line 3, chunk 2
      elseif, line 5, chunk 3
      else, line 7, chunk 4

while loops: 1
  0: line 15, chunk 7

repeat loops: 1
  0: line 13, chunk 6

numeric for loops: 1
  0: line 10, chunk 5

generic for loops: 1
  0: line 18, chunk 8

nest blocks: 1
  0: line 20, chunk 9, in chunk 0, label "la\"b"

functions: 1
  0: line 2, chunk 1, body from line 3 to 9, source directory "game", source path "game/every.os"
'''

# One instruction in two chunks, one in none, a chunk past the end, an unknown opcode, bytes that are no text.
CORRUPT_DUMP = r'''bytecode, version 8
source directory "\x00\xff"
source path ""

lines: 1
  0: at 4294967296 "a\nb"
      "" "\r"

chunks: 3
  0: 2 instructions from 0
      0 opcode 200 operand 7, spare 9
      1 OpIf if group 4294967295
  1: 2 instructions from 1, nested, declares locals
      listed above from 1
  2: 4294967295 instructions from 4294967295, nested
      out of bounds from 4294967295

instructions of no chunk: 1
      2 OpNest nest block 0

if groups: 1
  0: 0 branches

while loops: 0

repeat loops: 0

numeric for loops: 0

generic for loops: 0

nest blocks: 1
  0: line 9, chunk 9, in chunk 0, label ""

functions: 0
'''


def number(value, size=4):
    return value.to_bytes(size, 'little')


def text(content):
    return number(len(content)) + content


def corrupt_image():
    image = b'OSBC' + number(8, 2) + text(b'\0\xff') + text(b'')
    image += number(1) + text(b'a\nb') + number(0xFFFFFFFF) + number(2) + text(b'') + text(b'\r')
    image += number(3) + b'\xc8' + number(7) + number(9)
    image += b'\x02' + number(0xFFFFFFFF) + number(0) + b'\x0a' + number(0) + number(0)
    image += number(3) + number(0) + number(2) + b'\0\0' + number(1) + number(2) + b'\1\1'
    image += number(0xFFFFFFFF) + number(0xFFFFFFFF) + b'\0\1'
    image += number(1) + number(0) + 4 * number(0)
    return image + number(1) + number(9) + number(9) + number(0)


class Checks:
    def __init__(self, exe, directory):
        self.exe = exe
        self.directory = directory
        self.failed = False

    def path(self, name):
        return os.path.join(self.directory, name)

    def write(self, name, content):
        with open(self.path(name), 'wb') as file:
            file.write(content)

    def read(self, name):
        try:
            with open(self.path(name), 'rb') as file:
                return file.read()
        except FileNotFoundError:
            return None

    def run(self, *arguments, stdout=subprocess.PIPE):
        done = subprocess.run([self.exe, *arguments], cwd=self.directory, stdin=subprocess.DEVNULL, stdout=stdout,
                              stderr=subprocess.PIPE, timeout=60)
        return done.returncode, (done.stdout or b'').decode(), done.stderr.decode()

    def equal(self, name, got, want):
        if got == want:
            print('ok', name)
        else:
            self.failed = True
            print('not ok %s: got %r want %r' % (name, got, want))

    def true(self, name, condition, detail):
        self.equal(name, detail if not condition else True, True)


def check_compiling(checks):
    checks.write('hello.os', b'return 6 * 7')
    checks.equal('compile-is-silent', checks.run('hello.os', 'hello.osb'), (0, '', ''))
    image = checks.read('hello.osb')
    checks.true('magic-and-version', image.startswith(b'OSBC\x3c\0'), image[:6])
    checks.equal('source-is-the-input', image[6:22], text(b'') + text(b'hello.os'))

    checks.equal('source-name', checks.run('hello.os', 'named.osb', '--source', 'a\\b/c.os')[0], 0)
    checks.equal('source-name-and-directory', checks.read('named.osb')[6:24], text(b'a/b') + text(b'a/b/c.os')[:11])
    checks.equal('source-name-first', checks.run('--source', 'a\\b/c.os', 'hello.os', 'first.osb')[0], 0)
    checks.equal('source-name-first-same', checks.read('first.osb'), checks.read('named.osb'))
    checks.run('hello.os', 'lua.osb', '--source', 'lua.os')
    checks.equal('startup-image-head', checks.read('lua.osb')[:14], b'OSBC\x3c\0' + number(0) + number(6))

    checks.write('hello.osb', b'z' * 5000)
    checks.run('hello.os', 'hello.osb')
    checks.equal('output-is-replaced', checks.read('hello.osb'), image)
    checks.write('empty.os', b'')
    checks.equal('empty-script', checks.run('empty.os', 'empty.osb'), (0, '', ''))
    checks.write('deep.os', b'x = ' + b'(' * 100000)
    status, _, errors = checks.run('deep.os', 'deep.osb')
    checks.true('deep-script-ends', status in (0, 1), (status, errors))


def check_faults(checks):
    checks.write('open-if.os', b'if x')
    checks.equal('structure-fault', checks.run('open-if.os', 'no.osb'),
                 (1, '', "ostrelc: open-if.os: Missing 'end' for if block\n"))
    checks.write('open-quote.os', b'y = 1\nx = "a')
    checks.equal('text-fault', checks.run('open-quote.os', 'no.osb', '--source', 'shown.os'),
                 (1, '', "ostrelc: OstrelScript error: Unterminated string literal\n"
                         "  at shown.os:2, near token '\"a'\n"
                         "  x = \"a\n"
                         "      ^~\n"
                         "  hint: check spelling, operators, parentheses, and quote matching\n\n"))
    checks.equal('fault-leaves-no-output', checks.read('no.osb'), None)
    checks.equal('missing-input', checks.run('none.os', 'no.osb'),
                 (1, '', 'ostrelc: Failed to open script file: none.os\n'))
    checks.equal('output-cannot-be-opened', checks.run('hello.os', 'none/no.osb'),
                 (1, '', 'ostrelc: Failed to open bytecode file for writing: none/no.osb\n'))
    if os.path.exists('/dev/full'):
        checks.equal('disk-full', checks.run('hello.os', '/dev/full'),
                     (1, '', 'ostrelc: Failed to write bytecode file: /dev/full\n'))
        with open('/dev/full', 'wb') as full:
            checks.equal('dump-to-a-full-disk', checks.run('--dump', 'hello.osb', stdout=full),
                         (1, '', 'ostrelc: the dump could not be written\n'))


def check_dump(checks):
    checks.write('every.os', SCRIPT.encode())
    checks.run('every.os', 'every.osb', '--source', 'game/every.os')
    checks.equal('dump', checks.run('--dump', 'every.osb'), (0, DUMP, ''))
    checks.write('corrupt.osb', corrupt_image())
    checks.equal('dump-of-a-corrupt-image', checks.run('--dump', 'corrupt.osb'), (0, CORRUPT_DUMP, ''))
    checks.equal('dump-of-a-script', checks.run('--dump', 'every.os'),
                 (1, '', 'ostrelc: Invalid bytecode file (bad magic): every.os\n'))
    checks.write('cut.osb', checks.read('every.osb')[:-1])
    checks.equal('dump-of-a-cut-image', checks.run('--dump', 'cut.osb'),
                 (1, '', 'ostrelc: Invalid bytecode file (truncated): cut.osb\n'))
    checks.equal('dump-of-nothing', checks.run('--dump', 'none.osb'),
                 (1, '', 'ostrelc: Failed to open bytecode file for reading: none.osb\n'))


def check_command_line(checks):
    status, output, errors = checks.run('--help')
    checks.equal('help-status', (status, errors), (0, ''))
    checks.true('help-begins-with-usage', output.startswith(USAGE), output)
    for option in ('--source NAME', '--dump FILE', '--help'):
        checks.true('help-tells-of ' + option, '  ' + option in output[len(USAGE):], output)
    checks.equal('help-among-others', checks.run('a', '--nonsense', '--help')[0], 2)
    for name, arguments, reason in (
            ('nothing', (), 'an input and an output file are needed'),
            ('one-file', ('hello.os',), 'an input and an output file are needed'),
            ('three-files', ('a', 'b', 'c'), 'an input and an output file are needed'),
            ('dump-without-file', ('--dump',), '--dump takes one file'),
            ('dump-with-two-files', ('--dump', 'a', 'b'), '--dump takes one file'),
            ('dump-with-source', ('--dump', 'a', '--source', 'b'), '--source does not go with --dump'),
            ('source-without-name', ('a', 'b', '--source'), '--source needs a name'),
            ('unknown-option', ('a', 'b', '-x'), 'unknown option -x')):
        checks.equal('usage-' + name, checks.run(*arguments), (2, '', 'ostrelc: %s\n%s' % (reason, USAGE)))


def main():
    parser = argparse.ArgumentParser(description='Tests ostrelc.')
    parser.add_argument('--exe', required=True, help='the tool')
    arguments = parser.parse_args()
    with tempfile.TemporaryDirectory() as directory:
        checks = Checks(os.path.abspath(arguments.exe), directory)
        check_compiling(checks)
        check_faults(checks)
        check_dump(checks)
        check_command_line(checks)
    return 1 if checks.failed else 0


if __name__ == '__main__':
    sys.exit(main())
