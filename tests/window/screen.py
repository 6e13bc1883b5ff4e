"""An X server of our own, what we ask of it by Xlib, and the player's hands by xdotool.

There is no window manager on it: what one would do, giving a window the focus or asking it to close, is done here by
the same messages that a window manager sends.
"""

import ctypes
import os
import subprocess

SIZE = (1280, 1024)  # pixels


class ClientMessage(ctypes.Structure):
    _fields_ = [('type', ctypes.c_int), ('serial', ctypes.c_ulong), ('send_event', ctypes.c_int),
                ('display', ctypes.c_void_p), ('window', ctypes.c_ulong), ('message_type', ctypes.c_ulong),
                ('format', ctypes.c_int), ('data', ctypes.c_long * 5), ('padding', ctypes.c_long * 24)]


class Screen:
    """The server; `environment` is what a program needs to be shown on it."""

    CLIENT_MESSAGE = 33
    REVERT_TO_PARENT = 2

    def __init__(self):
        reader, writer = os.pipe()
        self.server = subprocess.Popen(
            ['Xvfb', '-displayfd', str(writer), '-screen', '0', '%dx%dx24' % SIZE, '-nolisten', 'tcp', '-noreset'],
            pass_fds=[writer], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(writer)
        with os.fdopen(reader) as numbers:
            number = numbers.readline().strip()
        if not number:
            raise RuntimeError('Xvfb did not start')
        self.name = ':' + number
        self.environment = dict(os.environ, DISPLAY=self.name)
        self.x = ctypes.CDLL('libX11.so.6')
        for function in ('XOpenDisplay', 'XDefaultRootWindow', 'XCreateSimpleWindow', 'XInternAtom'):
            getattr(self.x, function).restype = ctypes.c_void_p if function == 'XOpenDisplay' else ctypes.c_ulong
        handler = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)
        self.ignore_errors = handler(lambda display, error: 0)  # a window may vanish while we ask about it
        self.x.XSetErrorHandler(self.ignore_errors)
        self.x.XKeysymToKeycode.restype = ctypes.c_ubyte
        self.display = ctypes.c_void_p(self.x.XOpenDisplay(self.name.encode()))
        if not self.display.value:
            raise RuntimeError('cannot open ' + self.name)
        self.root = ctypes.c_ulong(self.x.XDefaultRootWindow(self.display))
        self.xdotool('mousemove', SIZE[0] - 1, SIZE[1] - 1)

    def close(self):
        self.server.terminate()
        self.server.wait()

    def xdotool(self, *arguments):
        subprocess.run(['xdotool'] + [str(a) for a in arguments], env=self.environment, check=True)

    def keycode(self, symbol):
        """The key that has this symbol."""
        self.x.XStringToKeysym.restype = ctypes.c_ulong
        return self.x.XKeysymToKeycode(self.display, ctypes.c_ulong(self.x.XStringToKeysym(symbol.encode())))

    def sync(self):
        self.x.XSync(self.display, 0)

    def children(self, window):
        root, parent, count = ctypes.c_ulong(), ctypes.c_ulong(), ctypes.c_uint()
        found = ctypes.POINTER(ctypes.c_ulong)()
        if not self.x.XQueryTree(self.display, ctypes.c_ulong(window), ctypes.byref(root), ctypes.byref(parent),
                                 ctypes.byref(found), ctypes.byref(count)):
            return []
        result = [found[i] for i in range(count.value)]
        if result:
            self.x.XFree(found)
        return result

    def title(self, window):
        text = ctypes.c_char_p()
        if not self.x.XFetchName(self.display, ctypes.c_ulong(window), ctypes.byref(text)):
            return None
        return text.value.decode('latin-1')

    def find(self, title):
        """The window of this title, or None."""
        self.sync()
        waiting = [self.root.value]
        while waiting:
            window = waiting.pop()
            if self.title(window) == title:
                return window
            waiting += self.children(window)
        return None

    def geometry(self, window):
        """(x, y, width, height) of a window's inside, on the screen; None if it is gone."""
        root, child = ctypes.c_ulong(), ctypes.c_ulong()
        x, y = ctypes.c_int(), ctypes.c_int()
        sizes = [ctypes.c_uint() for _ in range(4)]
        if not self.x.XGetGeometry(self.display, ctypes.c_ulong(window), ctypes.byref(root), ctypes.byref(x),
                                   ctypes.byref(y), *[ctypes.byref(s) for s in sizes]):
            return None
        self.x.XTranslateCoordinates(self.display, ctypes.c_ulong(window), self.root, 0, 0, ctypes.byref(x),
                                     ctypes.byref(y), ctypes.byref(child))
        return x.value, y.value, sizes[0].value, sizes[1].value

    def focus(self, window):
        self.x.XSetInputFocus(self.display, ctypes.c_ulong(window), self.REVERT_TO_PARENT, ctypes.c_ulong(0))
        self.sync()

    def resize(self, window, width, height):
        self.x.XResizeWindow(self.display, ctypes.c_ulong(window), width, height)
        self.sync()

    def other_window(self):
        """A window of somebody else, in the screen's corner."""
        window = self.x.XCreateSimpleWindow(self.display, self.root, 0, 0, 50, 50, 0, ctypes.c_ulong(0),
                                            ctypes.c_ulong(0xffffff))
        self.x.XMapRaised(self.display, ctypes.c_ulong(window))
        self.sync()
        return window

    def protocol_message(self, window, protocol):
        """What a window manager sends a window: here, there is none but us."""
        message = ClientMessage()
        message.type = self.CLIENT_MESSAGE
        message.window = window
        message.message_type = self.x.XInternAtom(self.display, b'WM_PROTOCOLS', 0)
        message.format = 32
        message.data[0] = self.x.XInternAtom(self.display, protocol, 0)
        self.x.XSendEvent(self.display, ctypes.c_ulong(window), 0, ctypes.c_long(0), ctypes.byref(message))
        self.sync()

    NORMAL_STATE = 1
    ICONIC_STATE = 3

    def set_state(self, window, state):
        """Notes on a window what its window manager made of it."""
        kind = ctypes.c_ulong(self.x.XInternAtom(self.display, b'WM_STATE', 0))
        data = (ctypes.c_long * 2)(state, 0)
        self.x.XChangeProperty(self.display, ctypes.c_ulong(window), kind, kind, 32, 0, data, 2)

    def minimise(self, window):
        self.set_state(window, self.ICONIC_STATE)
        self.x.XUnmapWindow(self.display, ctypes.c_ulong(window))
        self.sync()

    def restore(self, window):
        self.set_state(window, self.NORMAL_STATE)
        self.x.XMapWindow(self.display, ctypes.c_ulong(window))
        self.sync()

    def press_close_button(self, window):
        self.protocol_message(window, b'WM_DELETE_WINDOW')

    def activate(self, window):
        """Gives a game's window the focus as a window manager does."""
        self.focus(window)
        self.protocol_message(window, b'WM_TAKE_FOCUS')

    def pixels(self, x, y, width, height):
        """This part of the screen: rows of (r, g, b)."""
        raw = subprocess.run(['import', '-window', 'root', '-depth', '8', 'rgb:-'], env=self.environment, check=True,
                             stdout=subprocess.PIPE).stdout
        rows = []
        for row in range(y, y + height):
            start = (row * SIZE[0] + x) * 3
            line = raw[start:start + width * 3]
            rows.append([tuple(line[i:i + 3]) for i in range(0, len(line), 3)])
        return rows
