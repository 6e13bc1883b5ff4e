#!/usr/bin/env python3
"""visit.py --picture FILE.png -- COMMAND...

Plays a game where there is no display: starts it on an X server of its own, visits it with a few keys and clicks,
saves what its window shows, and asks it to end, first with the Backspace key and then with the close button. The
game's output goes where ours goes.

Exits with the game's exit status, or with 1 if the game did not end by itself. A game that opens no window and ends is
no fault of the visit.
"""

import argparse
import os
import signal
import subprocess
import sys
import time

import screen

SMALLEST_SIDE = 32  # pixels of a window that a game could be played in
START_PATIENCE = 60  # seconds until the window must be there; Wine is slow to start
SETTLING = 1.0  # seconds that the game's first pictures may take
END_PATIENCE = 5  # seconds that the game has to obey when it is asked to end


class Visit:
    def __init__(self, command, picture):
        self.picture = picture
        self.screen = screen.Screen()
        self.game = subprocess.Popen(command, env=self.screen.environment)

    def close(self):
        if self.game.poll() is None:
            self.game.kill()
            self.game.wait()
        self.screen.close()

    def await_end(self, seconds):
        """Whether the game ended in time."""
        try:
            self.game.wait(seconds)
            return True
        except subprocess.TimeoutExpired:
            return False

    def find_window(self):
        """The game's window: what has a title on this screen and can be seen. Wine has tiny windows of its own."""
        self.screen.sync()
        for window in self.screen.children(self.screen.root.value):
            geometry = self.screen.geometry(window)
            if geometry and min(geometry[2:]) >= SMALLEST_SIDE and self.screen.title(window):
                return window
        return None

    def await_window(self):
        end = time.monotonic() + START_PATIENCE
        while self.game.poll() is None and time.monotonic() < end:
            window = self.find_window()
            if window:
                return window
            time.sleep(0.1)
        return None

    def hold(self, key, seconds):
        self.screen.xdotool('keydown', key)
        time.sleep(seconds)
        self.screen.xdotool('keyup', key)

    def click(self, x, y):
        self.screen.xdotool('mousemove', x, y)
        self.screen.xdotool('mousedown', 1)
        time.sleep(0.15)  # a game looks at its buttons once a frame
        self.screen.xdotool('mouseup', 1)

    def save_picture(self, left, top, width, height):
        subprocess.run(['import', '-window', 'root', '-crop', '%dx%d+%d+%d' % (width, height, left, top), '+repage',
                        self.picture], env=self.screen.environment, check=True)

    def play(self, window):
        """A player's minute, in a few seconds: past the title, a walk, a place pointed at, another walk."""
        self.screen.activate(window)
        time.sleep(SETTLING)
        left, top, width, height = self.screen.geometry(window)
        self.click(left + width // 2, top + height // 2)
        time.sleep(0.5)
        self.hold('Right', 2.0)
        self.hold('Down', 0.3)
        self.click(left + width // 2, top + height * 7 // 8)
        time.sleep(1.0)
        self.hold('Up', 0.2)
        self.save_picture(left, top, width, height)
        self.hold('BackSpace', 0.3)
        if not self.await_end(END_PATIENCE):
            self.screen.press_close_button(window)

    def run(self):
        if os.path.exists(self.picture):
            os.remove(self.picture)
        window = self.await_window()
        if window is None:
            print('The game opened no window.', file=sys.stderr)
        else:
            try:
                self.play(window)
            except (TypeError, subprocess.CalledProcessError):  # the window went away under our hands
                print('The window closed before the visit was over.', file=sys.stderr)
        if not self.await_end(END_PATIENCE):
            print('The game did not end when it was asked to.', file=sys.stderr)
            return 1
        return self.game.returncode if self.game.returncode >= 0 else 128 - self.game.returncode


def main():
    parser = argparse.ArgumentParser(description='Plays a game where there is no display.')
    parser.add_argument('--picture', required=True, help='where to save what the window shows')
    parser.add_argument('command', nargs='+', help='what starts the game')
    arguments = parser.parse_args()
    signal.signal(signal.SIGTERM, lambda number, frame: sys.exit(128 + number))
    visit = Visit(arguments.command, os.path.abspath(arguments.picture))
    try:
        sys.exit(visit.run())
    finally:
        visit.close()


if __name__ == '__main__':
    main()
