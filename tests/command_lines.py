"""Runs the command lines of command_lines.txt: each ends or marks the run with the one message that its row names."""
import os
import re
import shlex
import subprocess
import sys
import tempfile

import support

ROW = re.compile(r'(command_line|fatal|warning) (\w+): (.*)')
FOUND = re.compile(r'(Command-line error|Fatal error|Warning|fatal error|warning|error|remark) #(\d+)')
KINDS = {'command_line': 'command-line error', 'fatal': 'fatal error', 'warning': 'warning'}
MACROS = 'lib/predefined_macros.txt'
SOURCES = {
    'x.c': b'int n;\n',
    'not_utf8.c': b'char *text = "a\xff(";\n',
    'nested.opt': b'-@ nested.opt\n',
    'unknown_mode/' + MACROS: b'no_such_mode yes NAME 1\n',
    'no_flag/' + MACROS: b'all yes NAME 1\nall\n',
    'bad_flag/' + MACROS: b'all maybe NAME 1\n',
    'no_name/' + MACROS: b'all yes\n',
    'no_mode/' + MACROS: b'gnu, yes NAME 1\n',
    'large.c': b'int n[] = {' + b'1, 2, 3, 4, 5, 6, 7, 8, 9, 10,\n' * 100000 + b'};\n',
    'repeated/' + MACROS: b'all yes NAME 1\nall yes NAME 2\n',
}


def tags():
    text = open(os.path.join(support.ROOT, 'src', 'errors', 'messages.def')).read()
    return {number: tag for number, tag in re.findall(r'^\w+\(\s*(\d+),\s*(\w+)', text, re.M)}


def first_message(rvparse, words):
    """(kind in small letters, number) of the first message; stands for itself when nothing came or the run crashed."""
    with tempfile.TemporaryDirectory() as folder:
        for name, text in SOURCES.items():
            os.makedirs(os.path.dirname(os.path.join(folder, name)), exist_ok=True)
            open(os.path.join(folder, name), 'wb').write(text)
        locale = words.pop(0) if words[0].startswith('LC_ALL=') else 'LC_ALL=C'
        limit = ['prlimit', '--as=' + words.pop(0)[len('MEMORY='):]] if words[0].startswith('MEMORY=') else []
        run = support.run(['env', locale] + limit + [rvparse, '--display_error_number', '--brief_diagnostics'] + words, cwd=folder,
                          timeout=20, stdin=subprocess.DEVNULL)
    found = FOUND.search(run.stderr.decode(errors='replace'))
    expected_status = 0 if found and found.group(1).lower() == 'warning' else 4
    if not found or run.returncode != expected_status:
        return 'status %d' % run.returncode, ''
    return found.group(1).lower(), found.group(2)


def main():
    options = support.arguments(__doc__)
    names, passed, failed = tags(), 0, 0
    for line in open(os.path.join(support.ROOT, 'tests', 'command_lines.txt')):
        row = ROW.match(line)
        if not row:
            continue
        words = [word.replace('\\n', '\n') for word in shlex.split(row.group(3))]
        kind, number = first_message(options.rvparse, words)
        if (kind, names.get(number)) == (KINDS[row.group(1)], row.group(2)):
            passed += 1
            continue
        failed += 1
        print('%s: %s %s, not %s %s' % (row.group(3), kind, names.get(number), KINDS[row.group(1)], row.group(2)))
    print('command lines: %d passed, %d failed, 0 skipped' % (passed, failed))
    return 1 if failed else 0


if __name__ == '__main__':
    sys.exit(main())
