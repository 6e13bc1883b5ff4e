#!/usr/bin/env python3
"""docs_test.py EXECUTABLE [--update]: holds the documents for authors of games to what the engine does.

A fenced block marked `ostrel` is a whole game script. The engine runs it in a game directory of its own, and its
standard output has to be the `output` block that follows, byte for byte. Where a `fault` block comes behind that, the
script has to end by that text on the error stream and with exit status 1; otherwise it has to end well and say nothing
there. The game's directory reads `my-game` in what is compared.

The headings of library.md name functions and constants. They have to be exactly those that the engine registers and
the startup library adds; each message of these has to stand in the text, and each message in the text in the engine.
Those of native-tables.md name what the host registers, and its last section lists the keys without a feature.

With --update the output blocks are rewritten with what the engine gives: read the difference before you commit it.
"""
import concurrent.futures
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
EXECUTABLE = os.path.abspath(sys.argv[1]) if len(sys.argv) > 1 else ''
DOCUMENTS = ('language', 'library', 'native-tables')
LIBRARY = 'docs/library.md'
NATIVE_TABLES = 'docs/native-tables.md'
GAME_FOLDERS = ('bin', 'Libraries', 'Resources/package', 'Resources/scripts', 'Resources/volatile')
GAME_NAME = b'my-game'
PATIENCE = 60  # seconds that an example may take on a loaded machine

# What stands for a text of the moment in a documented message.
PLACEHOLDERS = re.compile(r'\b(?:PATH|KEY|LETTER|PATTERN|REASON|LABEL|NUMBER|FUNCTION|TYPE|NAME)\b')
# The startup library's names for itself, which games leave alone.
INTERNAL = re.compile(r'ostrel[A-Z]')


def read(path):
    with open(os.path.join(ROOT, path), encoding='utf-8') as file:
        return file.read()


def sources(folder, *endings):
    """The texts of a source folder's files, without its subfolders."""
    return [read(os.path.join(folder, name)) for name in sorted(os.listdir(os.path.join(ROOT, folder)))
            if name.endswith(endings)]


# --- Examples --------------------------------------------------------------------------------------------------------

class Block:
    """A fenced block: its mark, its text and the lines, from 1, that this takes."""

    def __init__(self, mark, first):
        self.mark, self.first, self.lines = mark, first, []

    @property
    def text(self):
        return ''.join(line + '\n' for line in self.lines)


class Example:
    def __init__(self, script, output, fault):
        self.script, self.output, self.fault = script, output, fault


def blocks_of(document):
    """The blocks of a document in their order; what stands between two of them is a block of the mark None."""
    blocks = [Block(None, 1)]
    for number, line in enumerate(document.split('\n'), 1):
        fence = re.fullmatch(r'```(\w*)', line)
        if not fence:
            blocks[-1].lines.append(line)
        elif blocks[-1].mark is None:
            blocks.append(Block(fence.group(1), number + 1))
        elif fence.group(1):
            raise ValueError('line %d opens a block within a block' % number)
        else:
            blocks.append(Block(None, number + 1))
    if blocks[-1].mark is not None:
        raise ValueError('the block at line %d is not closed' % blocks[-1].first)
    return blocks


def examples_of(document):
    """Every script with its output. Neither may stand alone: what is shown as running is run."""
    # Behind each fenced block one of the mark None follows; blank lines there keep two blocks together.
    blocks = [block for block in blocks_of(document) if block.mark is not None or block.text.strip()]
    examples = []
    taken = []
    for place, block in enumerate(blocks):
        if block.mark != 'ostrel':
            continue
        behind = blocks[place + 1:place + 3] + [Block(None, 0), Block(None, 0)]
        if behind[0].mark != 'output':
            raise ValueError('the script at line %d has no output block' % block.first)
        fault = behind[1] if behind[1].mark == 'fault' else None
        examples.append(Example(block, behind[0], fault))
        taken += [behind[0], fault]
    for block in blocks:
        if block.mark in ('output', 'fault') and block not in taken:
            raise ValueError('the block at line %d belongs to no script' % block.first)
    return examples


def play(script):
    """Runs a game script of its own game: standard output, error stream, exit status."""
    root = os.path.realpath(tempfile.mkdtemp(prefix='velmaris-docs-'))
    try:
        for folder in GAME_FOLDERS:
            os.makedirs(os.path.join(root, folder))
        with open(os.path.join(root, 'Resources/package/graphics.os'), 'w'):
            pass
        with open(os.path.join(root, 'Resources/scripts/visual-novel.os'), 'w', encoding='utf-8', newline='\n') as file:
            file.write(script)
        executable = os.path.join(root, 'bin', os.path.basename(EXECUTABLE))
        try:
            os.link(EXECUTABLE, executable)
        except OSError:  # another file system
            shutil.copy(EXECUTABLE, executable)
        done = subprocess.run([executable], cwd=os.path.join(root, 'bin'), stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=PATIENCE,
                              env=dict(os.environ, SDL_VIDEODRIVER='dummy', SDL_AUDIODRIVER='dummy'))
        named = [stream.replace(root.encode(), GAME_NAME).decode() for stream in (done.stdout, done.stderr)]
        return named[0], named[1], done.returncode
    finally:
        shutil.rmtree(root, ignore_errors=True)


def played(examples):
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as workers:
        return list(workers.map(lambda example: play(example.script.text), examples))


class Examples(unittest.TestCase):
    maxDiff = None

    def check(self, name):
        path = 'docs/%s.md' % name
        examples = examples_of(read(path))
        self.assertTrue(examples, 'the document has no examples')
        for example, (output, errors, status) in zip(examples, played(examples)):
            with self.subTest('%s:%d' % (path, example.script.first)):
                self.assertEqual(errors, example.fault.text if example.fault else '')
                self.assertEqual(output, example.output.text)
                self.assertEqual(status, 1 if example.fault else 0)

    def test_of_the_language(self):
        self.check('language')

    def test_of_the_library(self):
        self.check('library')

    def test_of_the_native_tables(self):
        self.check('native-tables')


def update():
    """Rewrites the output and fault blocks, from the last to the first, so that the lines keep their numbers."""
    for name in DOCUMENTS:
        path = os.path.join(ROOT, 'docs', name + '.md')
        document = read(path)
        lines = document.split('\n')
        examples = examples_of(document)
        for example, (output, errors, _) in reversed(list(zip(examples, played(examples)))):
            for block, text in ((example.fault, errors), (example.output, output)):
                if block:
                    lines[block.first - 1:block.first - 1 + len(block.lines)] = text.splitlines()
        with open(path, 'w', encoding='utf-8') as file:
            file.write('\n'.join(lines))


# --- The library's names and messages --------------------------------------------------------------------------------

def documented_names(path=LIBRARY):
    """The names in the headings of a document, those of a table's functions with a dot."""
    names = []
    for heading in re.findall(r'^###+ (`.*)$', read(path), re.M):
        for signature in re.findall(r'`([^`]+)`', heading):
            name = re.match(r'(\w+)(?:\["(\w+)"\])?', signature)
            names.append('.'.join(filter(None, name.groups())))
    return names


def registered_names():
    """The names that the language's own library registers, read off its sources."""
    names = set()
    for text in sources('src/script/library', '.cpp'):
        names.update(re.findall(r'engine\.push(?:Function|Variable)\("(\w+)"', text))
        for table, entries in re.findall(r'registerLibraryTable\(\s*engine,\s*"(\w+)",(.*?)\);', text, re.S):
            names.update('%s.%s' % (table, name) for name in re.findall(r'\{"(\w+)",', entries))
        names.update('file.' + name for name in re.findall(r'file->set\("(\w+)"', text))
    builtins = re.search(r'builtinNames = \{(.*?)\};', read('src/script/library/builtin_names.cpp'), re.S).group(1)
    names.update(re.findall(r'"([\w.]+)"', builtins))
    return names


def startup_names():
    """The functions that the startup library gives to games."""
    names = set()
    for text in sources('src/startup', '.os'):
        names.update('.'.join(filter(None, name)) for name in
                     re.findall(r'^ *(?:decay |native )?function (\w+)(?:\["(\w+)"\])?\(', text, re.M))
    return {name for name in names if not INTERNAL.match(name)}


def literals(text):
    """The texts of the string literals in a piece of source; neighbours are one text."""
    whole = re.sub(r'(?<!\\)"\s*\n\s*"', '', text)
    return [re.sub(r'\\(.)', r'\1', literal) for literal in re.findall(r'"((?:[^"\\\n]|\\.)*)"', whole)]


def calls(text, names):
    """The arguments of the calls of these functions, as source text."""
    for call in re.finditer(r'\b(?:%s)\(' % names, text):
        depth, end, quoted = 1, call.end(), False
        while depth > 0:
            if text[end] == '\\' and quoted:
                end += 1
            elif text[end] == '"':
                quoted = not quoted
            elif not quoted:
                depth += {'(': 1, ')': -1}.get(text[end], 0)
            end += 1
        yield text[call.end():end - 1]


def library_messages():
    """The texts with which the library's functions fail, as far as they are fixed."""
    found = set()
    for text in sources('src/script/library', '.cpp'):
        for arguments in calls(text, 'fail|failFormat|raiseError'):
            found.update(literals(arguments))
        for declaration in re.findall(r'\bmessage = ("[^;]*");', text):
            found.update(literals(declaration))
    for text in sources('src/startup', '.os'):
        for arguments in calls(text, 'error|ostrelJsonParseError'):
            found.update(literals(arguments))
    return {message for message in found if len(message.strip()) > 3}


def joined(message, pieces):
    """Whether a message is put together from these pieces."""
    ends = {0}  # how far the pieces can reach
    for place in range(len(message)):
        if place in ends:
            ends.update(place + len(piece) for piece in pieces if piece and message.startswith(piece, place))
    return len(message) in ends


class Library(unittest.TestCase):
    maxDiff = None

    def test_documents_no_name_twice(self):
        names = documented_names()
        self.assertEqual(sorted(names), sorted(set(names)))

    def test_documents_every_name_and_no_other(self):
        registered = registered_names()
        added = startup_names()
        self.assertGreater(len(registered), 50, 'the sources are not read as they are written')
        self.assertGreater(len(added), 20, 'the startup library is not read as it is written')
        self.assertEqual(sorted(set(documented_names())), sorted(registered | added))

    def test_documents_what_the_engine_has(self):
        """Asked of the engine itself: each documented name is there, and the core's tables hold no other."""
        names = set(documented_names())
        tables = sorted({name.split('.')[0] for name in registered_names() if '.' in name} - {'file'})
        script = 'file = io["open"]("x", "w")\n'
        for name in sorted(names):
            table, _, key = name.partition('.')
            script += 'print("%s", typeOf(%s))\n' % (name, '%s["%s"]' % (table, key) if key else name)
        for table in tables:
            script += 'for place, key in ipairs(keys(%s)) ; print("%s." + key, "listed") ; end\n' % (table, table)
        output, errors, status = play(script)
        self.assertEqual((errors, status), ('', 0))
        answers = [line.rsplit(' ', 1) for line in output.splitlines()]
        self.assertEqual([name for name, kind in answers if kind == 'not'], [])
        self.assertEqual(sorted(name for name, kind in answers if kind == 'listed'),
                         sorted(name for name in names if name.split('.')[0] in tables and '.' in name))

    def test_documents_every_message(self):
        messages = library_messages()
        self.assertGreater(len(messages), 100, 'the sources are not read as they are written')
        document = PLACEHOLDERS.sub('', read(LIBRARY))
        self.assertEqual(sorted(message for message in messages if message not in document), [])

    def test_documents_no_message_that_is_not_there(self):
        known = set()
        for folder, endings in (('src/script/library', ('.cpp',)), ('src/script', ('.cpp', '.h')),
                                ('src/startup', ('.os',))):
            for text in sources(folder, *endings):
                known.update(literals(text))
        unknown = []
        paragraphs = re.findall(r'^Errors?: (.*?)(?:\n\n|\Z)', read(LIBRARY), re.M | re.S)
        self.assertGreater(len(paragraphs), 50, 'the document is not read as it is written')
        for message in re.findall(r'`([^`]+)`', '\n'.join(paragraphs)):
            for fixed in PLACEHOLDERS.split(message):
                if not any(fixed in literal for literal in known) and not joined(fixed, known):
                    unknown.append(message)
        self.assertEqual(unknown, [])


# --- The native tables -----------------------------------------------------------------------------------------------

UNAVAILABLE = 'not available in this version'


def unavailable_names():
    """The keys that the document lists as being without a feature."""
    section = read(NATIVE_TABLES).split('\n## What is not there yet\n')[1]
    return ['.'.join(name) for name in re.findall(r'^- `(\w+)\["(\w+)"\]\(', section, re.M)]


def helper_names():
    """The host's functions without a table."""
    return re.findall(r'^    publish\("(\w+)",', read('src/host/global_helpers.cpp'), re.M)


def asked_of(tables, question):
    """What the engine answers about every key of these tables: lines of words."""
    script = ''.join('for place, key in ipairs(keys(%s))\n    %s\nend\n' % (table, question.replace('TABLE', table))
                     for table in tables)
    output, errors, status = play(script)
    if errors or status:
        raise AssertionError(errors)
    return [line.split(' ', 1) for line in output.splitlines() if re.match(r'(?:%s)\.\w' % '|'.join(tables), line)]


def ranged(first, last):
    """The names from one to another: `TMP0` to `TMP9`, `KEY_A` to `KEY_Z`."""
    digits = re.fullmatch(r'(.*?)(\d+)', first)
    if not digits:
        return [first[:-1] + chr(letter) for letter in range(ord(first[-1]), ord(last[-1]) + 1)]
    end = int(last[len(digits.group(1)):])
    return [digits.group(1) + str(number) for number in range(int(digits.group(2)), end + 1)]


def documented_globals():
    """The globals that the rows of the document's lists name, in the first column or in code behind it."""
    names = set()
    for row in re.findall(r'^\| `(.*)$', read(NATIVE_TABLES), re.M):
        row = '`' + row
        for first, last in re.findall(r'`(\w+)` to `(\w+)`', row):
            names.update(ranged(first, last))
        names.update(re.findall(r'`(\w+)`', row))
    return names


def published_globals():
    """The constants and input globals, read off the sources."""
    constants = read('src/host/constants.cpp')
    names = set(re.findall(r'^ +(?:publish\(\{)?\{"(\w+)",', constants, re.M) +
                re.findall(r' \{"(\w+)", -?\w+\}', constants) + re.findall(r'publishQuery\("(\w+)"', constants))
    slots = re.search(r'renderSlots = (\d+)', constants).group(1)
    for prefix, first, last in re.findall(r'publish(?:Numbered|Counted)\("(\w+)", (\d+), (\w+),', constants):
        names.update(ranged(prefix + first, prefix + last.replace('renderSlots', slots)))
    inputs = read('src/host/input_globals.cpp')
    names.update(re.findall(r'"(OSTREL_MOUSE_\w+)"', inputs))
    buttons = re.search(r'touchBarButtons = (\d+)', inputs).group(1)
    names.update(ranged('OSTREL_TOUCHBAR_1', 'OSTREL_TOUCHBAR_' + buttons))
    keys = re.search(r'publishedKeys = \{\{(.*?)\}\};', read('src/host/presentation.cpp'), re.S).group(1)
    names.update('OSTREL_KEY_' + name for name in re.findall(r'"(\w+)"', keys))
    return names


class NativeTables(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        self.described = documented_names(NATIVE_TABLES)
        self.unavailable = unavailable_names()
        names = self.described + self.unavailable
        self.tables = sorted({name.split('.')[0] for name in names if '.' in name})

    def test_documents_no_name_twice(self):
        names = self.described + self.unavailable
        self.assertEqual(sorted(names), sorted(set(names)))

    def test_documents_every_key_and_no_other(self):
        self.assertEqual(self.tables, sorted(['Metal', 'Sailfish', 'Ostrel', 'Ruby', 'Lua', 'Audio', 'AI', 'Font',
                                              'Jade', 'Plush']))
        replaced = {'Metal.forceUpdate'}  # native, and wrapped by the startup library
        found = {line[0] for line in asked_of(self.tables, 'print("TABLE." + key)')}
        self.assertGreater(len(found), 100)
        keys = {name for name in self.described + self.unavailable if '.' in name}
        self.assertEqual(sorted(keys), sorted(found - (startup_names() - replaced)))

    def test_lists_exactly_what_is_not_there_yet(self):
        own = startup_names()
        question = 'ok, message = pcall(TABLE[key])\n    if not ok ; print("TABLE." + key, message) ; end'
        answers = [line for line in asked_of(self.tables, question) if line[0] not in own]
        missing = [line[0] for line in answers if line[-1] == '%s: %s' % (line[0], UNAVAILABLE)]
        self.assertEqual(sorted(self.unavailable), sorted(missing))

    def test_documents_every_global_function(self):
        self.assertEqual(sorted(name for name in self.described if '.' not in name), sorted(helper_names()))

    def test_documents_every_constant_and_input_global(self):
        published = published_globals()
        self.assertGreater(len(published), 200, 'the sources are not read as they are written')
        self.assertEqual(sorted(published), sorted(documented_globals()))

    def test_documents_no_message_that_is_not_there(self):
        known = set()
        for text in sources('src/host', '.cpp', '.h'):
            known.update(literals(text))
        paragraphs = re.findall(r'^Errors?: (.*?)(?:\n\n|\Z)', read(NATIVE_TABLES), re.M | re.S)
        unknown = []
        for message in re.findall(r'`([^`]+)`', '\n'.join(paragraphs)):
            pieces = PLACEHOLDERS.split(message)
            named = re.sub(r'^\w+ must be', ' must be', message)  # the parameter's name is put before it
            if not all(piece in known or piece == '' for piece in pieces) and named not in known and \
                    message not in known:
                unknown.append(message)
        self.assertEqual(unknown, [])

    def test_documents_every_message(self):
        document = PLACEHOLDERS.sub('', read(NATIVE_TABLES))
        messages = set()
        for text in sources('src/host', '.cpp'):
            for arguments in calls(text, r'fail|bindingError|requireCount'):
                messages.update(literals(arguments))
        messages = {message for message in messages if len(message.strip()) > 3}
        self.assertGreater(len(messages), 10, 'the sources are not read as they are written')
        self.assertEqual(sorted(message for message in messages if message not in document), [])


def anchors(document):
    """The anchors that a reader's browser makes of the headings."""
    return {re.sub(r'[^\w\- ]', '', heading.lower()).replace(' ', '-')
            for heading in re.findall(r'^##+ (.*)$', document, re.M)}


class Links(unittest.TestCase):
    def test_of_the_readme_lead_to_the_documents(self):
        for name in DOCUMENTS:
            self.assertIn('](docs/%s.md)' % name, read('README.md'))

    def test_within_the_documents_lead_somewhere(self):
        for name in DOCUMENTS:
            document = read('docs/%s.md' % name)
            prose = ''.join(block.text for block in blocks_of(document) if block.mark is None)
            for target, anchor in re.findall(r'\]\(([\w./]*)(?:#([^)]*))?\)', re.sub(r'`[^`\n]*`', '', prose)):
                with self.subTest('%s#%s' % (target, anchor)):
                    self.assertTrue(os.path.exists(os.path.join(ROOT, 'docs', target)))
                    if anchor:
                        self.assertIn(anchor, anchors(read('docs/' + target) if target else document))


if __name__ == '__main__':
    if not EXECUTABLE:
        sys.exit(__doc__.split('\n\n')[0])
    if '--update' in sys.argv:
        update()
    else:
        unittest.main(argv=sys.argv[:1])
