#!/usr/bin/env python3
"""boot_test.py EXECUTABLE: starts the engine in throw-away game directories, in every way a player might.

Where the executable lies decides which game runs; what it is called, where it is started from and what is written
behind it on the command line do not. What goes wrong at the start is one report on the error stream and status 1.
A Windows executable is started through Wine.
"""
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

EXECUTABLE = os.path.abspath(sys.argv[1]) if len(sys.argv) > 1 else ''
WINDOWS = EXECUTABLE.endswith('.exe')
SUFFIX = '.exe' if WINDOWS else ''
TIMEOUT = 60  # seconds


class Game:
    """A game directory with the executable in bin/; removed at the end of a with statement."""

    def __init__(self, script='print("game")\n', graphics='', name='Velmaris', prefix='game'):
        self.root = os.path.realpath(tempfile.mkdtemp(prefix=prefix))
        for directory in ('bin', 'Resources/package', 'Resources/scripts', 'Resources/volatile', 'Libraries'):
            os.makedirs(os.path.join(self.root, directory))
        self.executable = os.path.join(self.root, 'bin', name + SUFFIX)
        shutil.copy(EXECUTABLE, self.executable)
        self.write('Resources/package/graphics.os', graphics)
        self.write('Resources/scripts/visual-novel.os', script)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        shutil.rmtree(self.root)

    def write(self, name, text):
        with open(os.path.join(self.root, name), 'w', encoding='utf-8', newline='') as file:
            file.write(text)

    def remove(self, name):
        os.remove(os.path.join(self.root, name))

    def start(self, command=None, directory=None, arguments=()):
        """Runs the game; standard output, standard error and the exit status, with <ROOT> for the directory."""
        command = [command or self.executable, *arguments]
        if WINDOWS:
            command.insert(0, 'wine')
        environment = dict(os.environ, SDL_VIDEODRIVER='dummy', WINEDEBUG='-all', LC_ALL='C.UTF-8')
        done = subprocess.run(command, cwd=directory or os.path.join(self.root, 'bin'), env=environment,
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                              timeout=TIMEOUT, check=False)
        return self.shown(done.stdout), self.shown(done.stderr), done.returncode

    def shown(self, output):
        text = output.decode('utf-8', 'replace')
        return text.replace('Z:' + self.root, '<ROOT>').replace(self.root, '<ROOT>')


class Start(unittest.TestCase):
    SHOW_PATH = 'print(Ostrel["getPath"](), OSTREL_SCRIPT, OSTREL_GAME_NAME)\n'
    SHOWN = '<ROOT>/bin/ visual-novel.os Velmaris Testing\n'

    def test_the_game_beside_the_executable_runs(self):
        with Game(graphics='print("graphics")\n') as game:
            self.assertEqual(game.start(), ('graphics\ngame\n', '', 0))

    def test_the_working_directory_does_not_matter(self):
        with Game(self.SHOW_PATH) as game:
            self.assertEqual(game.start(directory='/'), (self.SHOWN, '', 0))

    def test_a_relative_command_finds_the_same_directory(self):
        with Game(self.SHOW_PATH) as game:
            command = os.path.join('bin', os.path.basename(game.executable))
            self.assertEqual(game.start(command=command, directory=game.root), (self.SHOWN, '', 0))

    def test_the_name_of_the_executable_does_not_matter(self):
        with Game(self.SHOW_PATH, name='another game') as game:
            self.assertEqual(game.start(), (self.SHOWN, '', 0))

    def test_the_command_line_is_not_read(self):
        with Game(self.SHOW_PATH) as game:
            arguments = ('--help', 'OSTREL_SCRIPT=other.os', 'other.os')
            self.assertEqual(game.start(arguments=arguments), (self.SHOWN, '', 0))

    @unittest.skipIf(WINDOWS, "links are the other system's")
    def test_a_link_to_the_executable_runs_the_game_where_the_executable_lies(self):
        with Game(self.SHOW_PATH) as game, tempfile.TemporaryDirectory() as elsewhere:
            link = os.path.join(elsewhere, 'play')
            os.symlink(game.executable, link)
            self.assertEqual(game.start(command=link, directory=elsewhere), (self.SHOWN, '', 0))

    def test_the_end_of_the_script_is_status_0_whatever_it_returns(self):
        with Game('return 5\n') as game:
            self.assertEqual(game.start(), ('', '', 0))

    def test_no_line_end_is_changed(self):
        with Game('print("a\\nb\\r\\nc")\nOstrel["hostLog"]("d\\ne")\n') as game:
            self.assertEqual(game.start(), ('a\nb\r\nc\n', 'd\ne\n', 0))


class Names(unittest.TestCase):
    """A file has the same name on every system, whatever letters it is written in."""

    LETTERS = '\u00e9\u20ac \u65e5\u672c \u0436'

    def test_a_game_may_lie_in_a_directory_of_any_name(self):
        with Game(Start.SHOW_PATH, prefix=self.LETTERS) as game:
            self.assertEqual(game.start(), (Start.SHOWN, '', 0))

    def test_the_files_of_a_game_may_have_any_name(self):
        script = ('print(Ostrel["readFile"]("%s.txt"))\n'
                  'file = io["open"]("%s.txt")\n'
                  'print(file["read"](file))\n'
                  'file["close"](file)\n'
                  'runFile("%s.os")\n' % ((self.LETTERS,) * 3))
        with Game(script) as game:
            game.write('Resources/scripts/%s.txt' % self.LETTERS, 'a text')
            game.write('Resources/scripts/%s.os' % self.LETTERS, 'print("a script")\n')
            self.assertEqual(game.start(), ('a text\na text\na script\n', '', 0))

    def test_what_a_game_writes_has_the_name_that_it_gave(self):
        script = ('volatile = Ostrel["getPath"]() + "../Resources/volatile/%s"\n'
                  'file = io["open"](volatile + ".txt", "w")\n'
                  'file["write"]("a text")\n'
                  'file["close"](file)\n'
                  'picture = Plush["createImage"](2, 1, 1, 2, 3, 4)\n'
                  'Plush["saveImage"](volatile + ".png", picture)\n'
                  'Plush["savePlushImage"](picture, volatile + ".pmg")\n'
                  'image, height, width = Plush["loadPNG"](volatile + ".png")\n'
                  'print(height, width)\n'
                  'image, width, height = Plush["loadPlushImage"](volatile + ".pmg")\n'
                  'print(width, height)\n' % self.LETTERS)
        with Game(script) as game:
            self.assertEqual(game.start(), ('1 2\n2 1\n', '', 0))
            written = sorted(os.listdir(os.path.join(game.root, 'Resources/volatile')))
            self.assertEqual(written, [self.LETTERS + suffix for suffix in ('.pmg', '.png', '.txt')])

    def test_a_command_gets_the_letters_that_it_was_given(self):
        with Game('pipe = io["popen"]("echo x>\\"%s\\"")\npipe["close"](pipe)\n' % self.LETTERS) as game:
            self.assertEqual(game.start(), ('', '', 0))
            self.assertIn(self.LETTERS, os.listdir(os.path.join(game.root, 'bin')))


class Failure(unittest.TestCase):
    HINT = '  hint: check spelling, operators, parentheses, and quote matching\n'

    def test_a_missing_graphics_script_is_reported_where_the_startup_library_runs_it(self):
        with Game() as game:
            game.remove('Resources/package/graphics.os')
            output, errors, status = game.start()
            self.assertEqual((output, status), ('', 1))
            expected = (r'Velmaris startup error: OstrelScript error: '
                        r'Failed to open script file: <ROOT>/bin/\.\./Resources/package/graphics\.os\n'
                        r"  at <ROOT>/bin/\.\./Resources/lua\.os:\d+, near token '\)'\n"
                        r'  runFile\(.*graphics\.os"\)\n'
                        r' +\^\n' + re.escape(self.HINT) + r'\n')
            self.assertRegex(errors, '^' + expected + '$')

    def test_a_missing_game_script_is_reported(self):
        with Game() as game:
            game.remove('Resources/scripts/visual-novel.os')
            self.assertEqual(game.start(), ('', 'Velmaris startup error: Failed to open script file: '
                                                '<ROOT>/bin/../Resources/scripts/visual-novel.os\n', 1))

    def test_without_a_game_nothing_but_the_report_comes_of_it(self):
        with Game() as game:
            shutil.rmtree(os.path.join(game.root, 'Resources'))
            output, errors, status = game.start()
            self.assertEqual((output, status), ('', 1))
            self.assertTrue(errors.startswith('Velmaris startup error: '), errors)

    def test_an_error_in_the_graphics_script_keeps_the_game_from_starting(self):
        with Game(graphics='print("graphics")\nerror("no picture")\n') as game:
            self.assertEqual(game.start(), ('graphics\n', 'Velmaris startup error: no picture\n', 1))

    def test_a_fault_in_the_game_script_is_reported_with_its_place(self):
        with Game('print("before")\nx = nothing()\nprint("after")\n') as game:
            report = ('Velmaris startup error: OstrelScript error: '
                      'Attempted to call a non-function value of type not\n'
                      "  at <ROOT>/bin/../Resources/scripts/visual-novel.os:2, near token ')'\n"
                      '  x = nothing()\n'
                      '              ^\n' + self.HINT + '\n')
            self.assertEqual(game.start(), ('before\n', report, 1))

    def test_a_game_script_that_does_not_compile_is_reported(self):
        with Game('print("before")\nif true\n') as game:
            output, errors, status = game.start()
            self.assertEqual((output, status), ('', 1))
            self.assertIn("Missing 'end' for if block", errors)

    def test_endless_recursion_is_a_report_and_no_crash(self):
        with Game('function f(n)\n  return 1 + f(n + 1)\nend\nf(1)\n') as game:
            output, errors, status = game.start()
            self.assertEqual((output, status), ('', 1))
            self.assertIn('native stack exhausted', errors)

    def test_scripts_may_recurse_deeply(self):
        with open(EXECUTABLE, 'rb') as file:
            instrumented = b'__asan_init' in file.read()  # its frames are several times as large
        depth = 5000 if instrumented else 10000
        script = 'function f(n)\n  if n == 0\n    return 0\n  end\n  return 1 + f(n - 1)\nend\nprint(f(%d))\n' % depth
        with Game(script) as game:
            self.assertEqual(game.start(), ('%d\n' % depth, '', 0))


if __name__ == '__main__':
    unittest.main(argv=sys.argv[:1])
