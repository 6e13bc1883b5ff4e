#!/usr/bin/env python3
"""demo_test.py EXECUTABLE: plays the demo game, on a screen of its own and without any.

The walk from the title to the lit house is played with real keys and clicks; what the screen shows tells how far it
got. The pictures are painted anew and compared with the committed ones. A Windows executable runs under Wine.
"""
import os
import shutil
import subprocess
import sys
import tempfile
import time
import unittest

TESTS = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
sys.path.insert(0, os.path.join(TESTS, 'window'))
import screen  # noqa: E402  (it stands beside the window test)

GAME = os.path.join(os.path.dirname(TESTS), 'game')
EXECUTABLE = os.path.abspath(sys.argv[1]) if len(sys.argv) > 1 else ''
WINDOWS = EXECUTABLE.endswith('.exe')
TITLE = 'The Lamplighter'
SCALE = 3  # client pixels for one of the picture's
PATIENCE = 20.0  # seconds; how long an expected change may take on a loaded machine
WALK = 60.0  # seconds; the path's length, on a loaded machine
PRESS = 0.2  # seconds; several frames, so that a frame sees the key

DARK_LAMP = (82, 80, 112)  # in the middle of a lamp's glass
LIT_LAMP = (255, 250, 214)
LAMP_HEADS = 100  # picture rows: the middle of the lamps' glass


class Demo:
    """The demo in a throw-away directory; stopped and removed at the end of a with statement."""

    def __init__(self, environment):
        self.root = tempfile.mkdtemp(prefix='demo')
        shutil.copytree(os.path.join(GAME, 'Resources'), os.path.join(self.root, 'Resources'))
        for directory in ('bin', 'Libraries'):
            os.makedirs(os.path.join(self.root, directory))
        os.makedirs(os.path.join(self.root, 'Resources', 'volatile'), exist_ok=True)
        executable = os.path.join(self.root, 'bin', os.path.basename(EXECUTABLE))
        shutil.copy(EXECUTABLE, executable)
        self.process = subprocess.Popen((['wine'] if WINDOWS else []) + [executable],
                                        env=dict(environment, WINEDEBUG='-all'), stdin=subprocess.DEVNULL,
                                        stdout=subprocess.PIPE, stderr=subprocess.PIPE)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        if self.process.poll() is None:
            self.process.kill()
        self.process.communicate()
        shutil.rmtree(self.root)

    def end(self):
        """Waits for the end: standard output, standard error, exit status."""
        output, errors = self.process.communicate(timeout=PATIENCE)
        return output.decode(), errors.decode(), self.process.returncode


def without_display():
    environment = {name: value for name, value in os.environ.items() if name not in ('DISPLAY', 'WAYLAND_DISPLAY')}
    return dict(environment, SDL_VIDEODRIVER='x11')


class Pictures(unittest.TestCase):
    @unittest.skipIf(WINDOWS, 'the pictures are painted by the native engine')
    def test_the_committed_pictures_are_what_the_script_paints(self):
        with tempfile.TemporaryDirectory() as painted:
            subprocess.run([os.path.join(GAME, 'make-assets'), EXECUTABLE, painted], check=True,
                           stdout=subprocess.DEVNULL, env=without_display())
            committed = os.path.join(GAME, 'Resources', 'package')
            names = sorted(name for name in os.listdir(committed) if name.endswith('.png'))
            self.assertEqual(sorted(os.listdir(painted)), names)
            for name in names:
                with open(os.path.join(painted, name), 'rb') as new, open(os.path.join(committed, name), 'rb') as old:
                    self.assertEqual(new.read(), old.read(), name)


class WithoutAWindow(unittest.TestCase):
    @unittest.skipIf(WINDOWS, 'there a window opens without a screen, too')
    def test_the_demo_says_so_and_ends(self):
        with Demo(without_display()) as demo:
            self.assertEqual(demo.end(), ('No window could be opened here, so The Lamplighter stays in the dark.\n',
                                          '', 0))


@unittest.skipUnless(shutil.which('Xvfb') and shutil.which('xdotool'), 'needs Xvfb and xdotool')
class Play(unittest.TestCase):
    def setUp(self):
        self.screen = screen.Screen()
        self.addCleanup(self.screen.close)

    def open_demo(self):
        demo = Demo(self.screen.environment)
        self.addCleanup(demo.__exit__)
        self.window = self.until(lambda: self.screen.find(TITLE), 'no window appeared')
        self.screen.focus(self.window)
        self.until(lambda: len(set(self.picture(40, 20, 240, 40))) > 8, 'no title was shown')
        return demo

    def until(self, condition, complaint, patience=PATIENCE):
        """Waits for a condition and gives what it gave."""
        end = time.monotonic() + patience
        while time.monotonic() < end:
            result = condition()
            if result:
                return result
            time.sleep(0.05)
        return self.fail(complaint)

    def picture(self, x, y, width, height):
        """The pixels of a part of the game's picture, one for each of the picture's own."""
        left, top, _, _ = self.screen.geometry(self.window)
        rows = self.screen.pixels(left + x * SCALE, top + y * SCALE, width * SCALE, height * SCALE)
        return [pixel for row in rows[::SCALE] for pixel in row[::SCALE]]

    def glass(self, colour):
        """Whether a lamp's glass of this colour is seen."""
        return colour in self.picture(0, LAMP_HEADS, 320, 1)

    def house_is_lit(self):
        """Whether the window behind which the path ends shows warm light."""
        glass = self.picture(278, 120, 8, 8)
        return any(red > 240 and 180 < green < 215 and 90 < blue < 125 for red, green, blue in glass)

    def press(self, key):
        self.screen.xdotool('keydown', key)
        time.sleep(PRESS)
        self.screen.xdotool('keyup', key)

    def click(self, x, y):
        left, top, _, _ = self.screen.geometry(self.window)
        self.screen.xdotool('mousemove', str(left + x * SCALE), str(top + y * SCALE))
        self.screen.xdotool('mousedown', '1')
        time.sleep(PRESS)
        self.screen.xdotool('mouseup', '1')

    def test_a_click_starts_it_a_click_walks_to_a_lamp_and_the_close_button_ends_it(self):
        demo = self.open_demo()
        self.click(160, 150)
        self.until(lambda: self.glass(DARK_LAMP), 'the scene did not appear')
        self.assertFalse(self.glass(LIT_LAMP))
        self.click(120, 155)
        self.until(lambda: self.glass(LIT_LAMP), 'the walker did not light the lamp')
        self.screen.press_close_button(self.window)
        self.assertEqual(demo.end(), ('Good night.\n', '', 0))

    def test_return_starts_it_the_arrow_key_walks_home_and_backspace_ends_it(self):
        demo = self.open_demo()
        self.press('Return')
        self.until(lambda: self.glass(DARK_LAMP), 'the scene did not appear')
        self.screen.xdotool('keydown', 'Right')
        self.until(self.house_is_lit, 'the house was never lit', WALK)
        self.screen.xdotool('keyup', 'Right')
        self.press('BackSpace')
        self.assertEqual(demo.end(), ('Good night.\n', '', 0))


if __name__ == '__main__':
    unittest.main(argv=sys.argv[:1])
