#!/usr/bin/env python3
"""window_test.py --exe PATH [--wine] [--wineprefix DIR]

Plays a small game in a real window on an X server of its own, as a player would: real keys, clicks and moves, real
pixels from the screen, another window that takes the focus, the close button. What the game prints tells what it
saw. With --wine the executable is the Windows one and runs under Wine.

Prints a line 'ok NAME' or 'not ok NAME: detail' for each check and exits with 1 if any failed. Needs Xvfb, xdotool,
ImageMagick's import, and libX11.
"""

import argparse
import contextlib
import os
import shutil
import subprocess
import sys
import tempfile
import threading
import time

import screen

IMAGE = (320, 180)  # pixels, also the window's first size
CLEAR = (200, 30, 90)
SECOND_CLEAR = (1, 250, 128)
BACKGROUND = (20, 40, 60, 255)
PATIENCE = 8.0  # seconds; how long an expected change may take on a loaded machine
QUIET = 0.4  # seconds; how long to watch for something that must not happen

KEYS = {'RETURN': 'Return', 'UP': 'Up', 'DOWN': 'Down', 'LEFT': 'Left', 'RIGHT': 'Right', 'BACK': 'BackSpace',
        'DELETE': 'Delete', 'SPACE': 'space'}
KEYS.update({letter: letter.lower() for letter in 'ABCDEFGHIJKLMNOPQRSTUVWXYZ'})
KEYS.update({digit: digit for digit in '1234567890'})


# The presentation rule, written down plainly.

def drawn_rectangle(image, client):
    scale = max(min(client[0] / image[0], client[1] / image[1]), 0.0001)
    width = min(max(int(image[0] * scale + 0.5), 1), client[0])
    height = min(max(int(image[1] * scale + 0.5), 1), client[1])
    return (client[0] - width) // 2, (client[1] - height) // 2, width, height


def picture():
    """The pixels that the game's script draws: a list of rows of (r, g, b, a)."""
    width, height = IMAGE
    rows = [[BACKGROUND] * width for _ in range(height)]
    for y in range(16):
        for x in range(16):
            rows[20 + y][40 + x] = (255, 255, 255, 0)
            rows[20 + y][60 + x] = (255, 255, 255, 128)
            rows[20 + y][80 + x] = (x * 16, y * 16, 77, 255)
            rows[20 + y][100 + x] = (x * 16, y * 16, 77, x * 16 + y)
    rows[0][0], rows[0][-1] = (255, 0, 0, 255), (255, 0, 255, 255)
    rows[-1][0], rows[-1][-1] = (0, 255, 255, 255), (255, 255, 0, 255)
    return rows


def presented(client, clear):
    """What a client area of this size shows: rows of (r, g, b)."""
    rows = picture()
    left, top, width, height = drawn_rectangle(IMAGE, client)
    out = []
    for y in range(client[1]):
        row = [clear] * client[0]
        if top <= y < top + height:
            source = rows[(y - top) * IMAGE[1] // height]
            for x in range(left, left + width):
                r, g, b, a = source[(x - left) * IMAGE[0] // width]
                row[x] = tuple((s * a + c * (255 - a)) // 255 for s, c in zip((r, g, b), clear))
        out.append(row)
    return out


def image_position(position, client):
    """Where a place of the client area lies in the image."""
    drawn = drawn_rectangle(IMAGE, client)
    result = []
    for axis in (0, 1):
        size, steps = IMAGE[axis], drawn[2 + axis] - 1
        inside = min(max(position[axis] - drawn[axis], 0), steps)
        result.append(min((inside * (size - 1) + steps // 2) // steps, size - 1))
    return tuple(result)


class Game:
    """The running game: its output as it comes, and what its last lines say of the input."""

    def __init__(self, command, directory, environment):
        self.lines, self.state = [], {}
        self.changed = threading.Condition()
        self.process = subprocess.Popen(command, cwd=directory, env=environment, stdin=subprocess.DEVNULL,
                                        stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.errors = b''
        self.threads = [threading.Thread(target=self.read_output), threading.Thread(target=self.read_errors)]
        for thread in self.threads:
            thread.daemon = True
            thread.start()

    def read_output(self):
        for raw in self.process.stdout:
            line = raw.decode('utf-8', 'replace').rstrip('\r\n')
            with self.changed:
                self.lines.append(line)
                words = line.split()
                if words[:1] in (['key'], ['button']):
                    self.state[words[0] + ' ' + words[1]] = words[2] == 'true'
                elif words[:1] == ['mouse']:
                    self.state['mouse'] = (int(words[1]), int(words[2]))
                self.changed.notify_all()

    def read_errors(self):
        self.errors = self.process.stderr.read()

    def wait(self, condition, patience=PATIENCE):
        with self.changed:
            return self.changed.wait_for(condition, patience)

    def wait_line(self, line, since=0, patience=PATIENCE):
        if not self.wait(lambda: line in self.lines[since:], patience):
            raise AssertionError('no line %r; last lines %r' % (line, self.lines[-6:]))

    def wait_state(self, name, value, patience=PATIENCE):
        if not self.wait(lambda: self.state.get(name) == value, patience):
            raise AssertionError('%s is %r, not %r; last lines %r' % (name, self.state.get(name), value,
                                                                     self.lines[-6:]))

    def finish(self):
        status = self.process.wait(PATIENCE * 2)
        for thread in self.threads:
            thread.join(PATIENCE)
        return status

    def stop(self):
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()


class Test:
    def __init__(self, arguments):
        self.arguments = arguments
        self.failed = 0
        self.screen = self.game = self.window = None
        self.root = tempfile.mkdtemp(prefix='windowtest')
        for folder in ('bin', 'Resources/package', 'Resources/scripts', 'Resources/volatile', 'Libraries'):
            os.makedirs(os.path.join(self.root, folder))
        with open(os.path.join(self.root, 'Resources/package/graphics.os'), 'w'):
            pass
        shutil.copy(os.path.join(os.path.dirname(os.path.abspath(__file__)), 'window_game.os'),
                    os.path.join(self.root, 'Resources/scripts/visual-novel.os'))
        self.executable = os.path.join(self.root, 'bin', os.path.basename(arguments.exe))
        shutil.copy(arguments.exe, self.executable)

    def environment(self, display):
        environment = dict(os.environ)
        for name in ('DISPLAY', 'WAYLAND_DISPLAY', 'SDL_VIDEODRIVER'):
            environment.pop(name, None)
        if display:
            environment['DISPLAY'] = display
        if self.arguments.wine:
            environment['WINEDEBUG'] = '-all'
            if self.arguments.wineprefix:
                environment['WINEPREFIX'] = self.arguments.wineprefix
        return environment

    def start(self, display):
        command = (['wine'] if self.arguments.wine else []) + [self.executable]
        return Game(command, os.path.join(self.root, 'bin'), self.environment(display))

    def settle(self):
        """Waits until Wine's own processes have left the screen."""
        if self.arguments.wine:
            with contextlib.suppress(subprocess.TimeoutExpired):
                subprocess.run(['wineserver', '-w'], env=self.environment(None), timeout=30)

    def check(self, function):
        name = function.__name__
        try:
            function()
            print('ok', name, flush=True)
        except Exception as fault:  # every fault is a failed check, also one of the tools
            self.failed += 1
            print('not ok %s: %s' % (name, fault), flush=True)

    # What the checks are made of.

    def same(self, got, want, what):
        if got != want:
            raise AssertionError('%s is %r, not %r' % (what, got, want))

    def eventually(self, probe, want, what):
        end = time.monotonic() + PATIENCE
        got = probe()
        while got != want and time.monotonic() < end:
            time.sleep(0.05)
            got = probe()
        self.same(got, want, what)

    def await_window(self, title):
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end:
            window = self.screen.find(title)
            if window:
                return window
            time.sleep(0.05)
        raise AssertionError('no window %r' % title)

    def client(self):
        return self.screen.geometry(self.window)[2:]

    def expect_picture(self, size, clear):
        """The client area, to the last pixel."""
        want = presented(size, clear)
        end = time.monotonic() + PATIENCE
        while True:
            x, y, width, height = self.screen.geometry(self.window)
            if (width, height) == tuple(size):
                got = self.screen.pixels(x, y, width, height)
                if got == want:
                    return
            if time.monotonic() > end:
                break
            time.sleep(0.1)
        self.same((width, height), tuple(size), 'the size on the screen')
        wrong = [(i, j) for j in range(height) for i in range(width) if got[j][i] != want[j][i]]
        i, j = wrong[0]
        raise AssertionError('%d pixels differ, the first at %d, %d: %r, not %r' % (len(wrong), i, j, got[j][i],
                                                                                    want[j][i]))

    def point_at(self, x, y):
        """Moves the mouse to a place of the client area and waits for what the game must see of it."""
        left, top, width, height = self.screen.geometry(self.window)
        self.screen.xdotool('mousemove', left + x, top + y)
        self.game.wait_state('mouse', image_position((x, y), (width, height)))

    def point_at_all_edges(self):
        """Every corner and edge of the drawn rectangle, each reached from the middle."""
        size = self.client()
        left, top, width, height = drawn_rectangle(IMAGE, size)
        columns = {left: 0, left + width - 1: IMAGE[0] - 1, left + width // 2: None}
        rows = {top: 0, top + height - 1: IMAGE[1] - 1, top + height // 2: None}
        for x in columns:
            for y in rows:
                self.point_at(left + width // 3, top + height // 3)
                self.point_at(x, y)
                seen = self.game.state['mouse']
                for axis, want in enumerate((columns[x], rows[y])):
                    if want is not None:
                        self.same(seen[axis], want, 'coordinate %d at %d, %d' % (axis, x, y))

    def tap(self, key, line=None):
        """Presses and releases a key; with a line, waits for the game to have obeyed."""
        since = len(self.game.lines)
        self.screen.xdotool('keydown', KEYS[key])
        self.game.wait_state('key ' + key, True)
        self.screen.xdotool('keyup', KEYS[key])
        self.game.wait_state('key ' + key, False)
        if line:
            self.game.wait_line(line, since)
        return since

    # The checks, in the order of a player's visit.

    def the_window_opens(self):
        self.game.wait_line('ready', patience=PATIENCE * 5)
        self.window = self.await_window('first title')
        self.screen.activate(self.window)

    def the_client_area_has_the_size_asked_for(self):
        self.eventually(self.client, IMAGE, 'the client area')

    def the_window_is_centred(self):
        x, y, width, height = self.screen.geometry(self.window)
        for got, room, size in ((x, screen.SIZE[0], width), (y, screen.SIZE[1], height)):
            # A title bar and borders, which only Windows counts, may shift the inside by half their size.
            if abs(got - (room - size) // 2) > 20:
                raise AssertionError('at %d, %d' % (x, y))

    def the_frame_is_on_the_screen_pixel_by_pixel(self):
        self.expect_picture(IMAGE, CLEAR)

    def every_published_key_goes_down_and_up(self):
        for key in KEYS:
            if key not in '12345678':
                self.tap(key)

    def several_keys_are_held_at_once(self):
        for key in ('A', 'LEFT', 'SPACE'):
            self.screen.xdotool('keydown', KEYS[key])
            self.game.wait_state('key ' + key, True)
        self.same([self.game.state['key ' + k] for k in ('A', 'LEFT', 'SPACE')], [True] * 3, 'the held keys')
        for key in ('A', 'LEFT', 'SPACE'):
            self.screen.xdotool('keyup', KEYS[key])
            self.game.wait_state('key ' + key, False)

    def keys_are_seen_while_alt_is_held(self):
        self.screen.xdotool('keydown', 'alt')  # Windows then sends messages of another kind
        try:
            for key in ('G', 'UP'):
                self.tap(key)
        finally:
            self.screen.xdotool('keyup', 'alt')
        self.tap('G')

    def each_mouse_button_has_its_number(self):
        self.point_at(100, 90)
        for x_button, number in ((1, 1), (2, 2), (3, 3)):  # left, middle, right on both sides
            self.screen.xdotool('mousedown', x_button)
            self.game.wait_state('button %d' % number, True)
            self.screen.xdotool('mouseup', x_button)
            self.game.wait_state('button %d' % number, False)

    def the_mouse_maps_one_to_one_in_an_unscaled_window(self):
        self.point_at_all_edges()
        self.point_at(123, 45)
        self.same(self.game.state['mouse'], (123, 45), 'the mouse')

    def a_held_button_keeps_the_mouse_outside_the_window(self):
        x, y, width, height = self.screen.geometry(self.window)
        self.point_at(50, 60)
        self.screen.xdotool('mousedown', 1)
        self.game.wait_state('button 1', True)
        self.screen.xdotool('mousemove', x + width + 150, y + height + 120)
        self.game.wait_state('mouse', (IMAGE[0] - 1, IMAGE[1] - 1))
        self.screen.xdotool('mousemove', x - 100, y - 80)
        self.game.wait_state('mouse', (0, 0))
        self.screen.xdotool('mouseup', 1)
        self.game.wait_state('button 1', False)
        self.point_at(50, 60)

    def a_capture_holds_the_presented_pixels(self):
        self.expect_capture(IMAGE, CLEAR)

    def expect_capture(self, size, clear):
        since = self.tap('1', 'captured')
        lines = self.game.lines[since:]
        self.same([l for l in lines if l.startswith('size')], ['size %d %d' % tuple(size)], 'the size')
        want = presented(size, clear)
        for y in (0, size[1] // 2, size[1] - 1):
            for x in (0, size[0] // 2, size[0] - 1):
                line = 'pixel %d %d %d %d %d 255' % ((x, y) + want[y][x])
                if line not in lines:
                    raise AssertionError('no %r in %r' % (line, [l for l in lines if l.startswith('pixel')]))

    def a_wide_window_shows_bars_left_and_right(self):
        self.screen.resize(self.window, 700, 250)
        self.expect_picture((700, 250), CLEAR)

    def mouse_positions_at_the_edges_of_a_letterboxed_frame(self):
        self.point_at_all_edges()

    def mouse_positions_in_the_bars_belong_to_the_nearer_edge(self):
        self.point_at(350, 125)
        self.point_at(0, 125)
        self.same(self.game.state['mouse'][0], 0, 'x in the left bar')
        self.point_at(350, 125)
        self.point_at(699, 125)
        self.same(self.game.state['mouse'][0], IMAGE[0] - 1, 'x in the right bar')

    def a_capture_of_a_letterboxed_window_holds_the_bars(self):
        self.expect_capture((700, 250), CLEAR)

    def a_tall_window_shows_bars_above_and_below(self):
        self.screen.resize(self.window, 333, 401)
        self.expect_picture((333, 401), CLEAR)
        self.point_at_all_edges()

    def a_small_window_shrinks_the_frame(self):
        self.screen.resize(self.window, 200, 97)
        self.expect_picture((200, 97), CLEAR)
        self.point_at_all_edges()

    def the_clear_colour_changes_bars_and_transparent_pixels(self):
        self.screen.resize(self.window, 500, 200)
        self.tap('4', 'recoloured')
        self.expect_picture((500, 200), SECOND_CLEAR)

    def a_window_is_as_small_as_it_is_asked_for(self):
        self.tap('8', 'shrunk')
        self.eventually(self.client, (48, 30), 'the client area')
        self.expect_picture((48, 30), SECOND_CLEAR)
        self.point_at_all_edges()

    def spawning_again_renames_and_resizes_the_window(self):
        self.tap('2', 'reopened')
        self.same(self.await_window('second title'), self.window, 'the window of the second title')
        self.eventually(self.client, (400, 300), 'the client area')
        self.expect_picture((400, 300), SECOND_CLEAR)
        self.point_at_all_edges()

    def the_title_can_be_set_and_read(self):
        self.tap('3', 'title third title')
        self.same(self.await_window('third title'), self.window, 'the window of the third title')

    def a_minimised_window_keeps_its_size_and_picture(self):
        since = self.tap('6')
        self.screen.minimise(self.window)
        self.game.wait_line('captured', since)
        self.same([l for l in self.game.lines[since:] if l.startswith('size')], ['size 400 300'], 'the size')
        self.screen.restore(self.window)
        self.screen.activate(self.window)
        self.expect_picture((400, 300), SECOND_CLEAR)
        self.eventually(lambda: self.sees_key('L'), True, 'a key in the restored window')
        self.point_at_all_edges()

    def a_minimised_window_can_be_opened_again_with_another_size(self):
        since = self.tap('7')
        self.screen.minimise(self.window)
        self.game.wait_line('captured', since)
        self.same([l for l in self.game.lines[since:] if l.startswith('size')], ['size 360 250'], 'the size')
        self.screen.restore(self.window)
        self.screen.activate(self.window)
        self.expect_picture((360, 250), SECOND_CLEAR)
        self.eventually(lambda: self.sees_key('L'), True, 'a key in the restored window')
        self.point_at_all_edges()

    def the_keypad_moves_while_it_writes_no_digits(self):
        for symbol, key in (('KP_Left', 'LEFT'), ('KP_Up', 'UP'), ('KP_Right', 'RIGHT'), ('KP_Down', 'DOWN'),
                            ('KP_Delete', 'DELETE'), ('KP_Enter', 'RETURN')):
            code = self.screen.keycode(symbol)
            self.screen.xdotool('keydown', code)
            self.game.wait_state('key ' + key, True)
            self.screen.xdotool('keyup', code)
            self.game.wait_state('key ' + key, False)

    def the_keypad_does_nothing_while_it_writes_digits(self):
        self.screen.xdotool('key', 'Num_Lock')
        try:
            since = len(self.game.lines)
            for symbol in ('KP_Left', 'KP_Up', 'KP_Right', 'KP_Down', 'KP_Delete'):
                self.screen.xdotool('key', self.screen.keycode(symbol))
            time.sleep(QUIET)
            self.same([l for l in self.game.lines[since:] if l.startswith('key')], [], 'what the game saw')
        finally:
            self.screen.xdotool('key', 'Num_Lock')

    def a_key_held_when_the_focus_is_lost_reads_up_at_once(self):
        self.point_at(100, 100)
        self.screen.xdotool('keydown', KEYS['H'])
        self.game.wait_state('key H', True)
        self.other = self.screen.other_window()
        self.screen.focus(self.other)
        self.game.wait_state('key H', False, patience=2.0)

    def keys_of_another_window_are_not_seen(self):
        since = len(self.game.lines)
        self.screen.xdotool('key', KEYS['J'])
        self.screen.xdotool('keyup', KEYS['H'])
        time.sleep(QUIET)
        self.same([l for l in self.game.lines[since:] if l.startswith('key')], [], 'what the game saw')

    def keys_are_seen_again_with_the_focus(self):
        self.screen.activate(self.window)
        self.eventually(lambda: self.sees_key('J'), True, 'a key after the focus came back')
        self.same(self.game.state['key H'], False, 'the key that was held')

    def sees_key(self, key):
        self.screen.xdotool('keydown', KEYS[key])
        try:
            return self.game.wait(lambda: self.game.state.get('key ' + key), 0.5)
        finally:
            self.screen.xdotool('keyup', KEYS[key])
            self.game.wait_state('key ' + key, False)

    def a_killed_window_makes_room_for_another(self):
        self.tap_last('5', 'replaced')
        before, self.window = self.window, self.await_window('fourth title')
        self.eventually(lambda: self.screen.find('third title'), None, 'the window before')
        self.screen.activate(self.window)
        self.eventually(self.client, (200, 100), 'the client area')
        self.expect_picture((200, 100), (0, 0, 0))
        self.eventually(lambda: self.sees_key('K'), True, 'a key in the new window')
        self.point_at_all_edges()

    def tap_last(self, key, line):
        """A key whose effect takes the window away, and with it perhaps the key's release."""
        since = len(self.game.lines)
        self.screen.xdotool('keydown', KEYS[key])
        self.game.wait_line(line, since)
        self.screen.xdotool('keyup', KEYS[key])
        self.game.wait_state('key ' + key, False)

    def the_close_button_only_asks(self):
        self.screen.press_close_button(self.window)
        self.game.wait_line('closing')
        self.same(self.screen.find('fourth title'), self.window, 'the window after the request')

    def the_game_ends_cleanly(self):
        self.game.wait_line('end')
        self.same(self.game.finish(), 0, 'the exit status')
        self.same(self.game.errors, b'', 'the error stream')
        self.eventually(lambda: self.screen.find('fourth title'), None, 'the window after the end')

    def without_a_display_there_is_no_window_and_no_crash(self):
        game = self.start(None)
        try:
            game.wait_line('no window', patience=PATIENCE * 5)
            self.same(game.finish(), 0, 'the exit status')
            self.same(game.lines[-1:], ['end'], 'the last line')
        finally:
            game.stop()

    def run(self):
        try:
            self.settle()
            self.check(self.without_a_display_there_is_no_window_and_no_crash)
            self.settle()
            self.screen = screen.Screen()
            self.game = self.start(self.screen.name)
            self.check(self.the_window_opens)
            if self.window:
                for function in (
                        self.the_client_area_has_the_size_asked_for, self.the_window_is_centred,
                        self.the_frame_is_on_the_screen_pixel_by_pixel, self.every_published_key_goes_down_and_up,
                        self.several_keys_are_held_at_once, self.keys_are_seen_while_alt_is_held,
                        self.each_mouse_button_has_its_number,
                        self.the_mouse_maps_one_to_one_in_an_unscaled_window,
                        self.a_held_button_keeps_the_mouse_outside_the_window,
                        self.a_capture_holds_the_presented_pixels, self.a_wide_window_shows_bars_left_and_right,
                        self.mouse_positions_at_the_edges_of_a_letterboxed_frame,
                        self.mouse_positions_in_the_bars_belong_to_the_nearer_edge,
                        self.a_capture_of_a_letterboxed_window_holds_the_bars,
                        self.a_tall_window_shows_bars_above_and_below, self.a_small_window_shrinks_the_frame,
                        self.the_clear_colour_changes_bars_and_transparent_pixels,
                        self.a_window_is_as_small_as_it_is_asked_for,
                        self.spawning_again_renames_and_resizes_the_window, self.the_title_can_be_set_and_read,
                        self.a_minimised_window_keeps_its_size_and_picture,
                        self.a_minimised_window_can_be_opened_again_with_another_size,
                        self.the_keypad_moves_while_it_writes_no_digits,
                        self.the_keypad_does_nothing_while_it_writes_digits,
                        self.a_key_held_when_the_focus_is_lost_reads_up_at_once,
                        self.keys_of_another_window_are_not_seen, self.keys_are_seen_again_with_the_focus,
                        self.a_killed_window_makes_room_for_another, self.the_close_button_only_asks,
                        self.the_game_ends_cleanly):
                    self.check(function)
            if self.failed:
                print('# the game wrote %r to its error stream' % self.game.errors.decode('utf-8', 'replace')[-2000:])
        finally:
            if self.game:
                self.game.stop()
            self.settle()
            if self.screen:
                self.screen.close()
            shutil.rmtree(self.root, ignore_errors=True)
        return 1 if self.failed else 0


def main():
    parser = argparse.ArgumentParser(description='Plays a game in a real window.')
    parser.add_argument('--exe', required=True, help='the engine')
    parser.add_argument('--wine', action='store_true', help='run it under Wine')
    parser.add_argument('--wineprefix', default=os.environ.get('WINEPREFIX'), help="Wine's directory")
    sys.exit(Test(parser.parse_args()).run())


if __name__ == '__main__':
    main()
