"""Shows that each row of the tables occurs in a case: prints what is missing and one summary line.

Options: every spelling of a row of options.def, long or by its letter, stands in the `// options:` lines of a case.
Messages: every row of messages.def that the sources use occurs in a case by its tag or in a golden by its text.
Pragmas: every row of pragmas.def occurs in a case.
What has no case stands with its reason in messages_without_case.txt or pragmas_without_case.txt.
"""
import glob
import os
import re
import shlex
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
SOURCE = os.path.join(HERE, '..', 'src')
HEADER_LINES = 12  # of a case; further lines hold no options
OPTION_ROW = re.compile(r'^OPTION(?:_ALSO)?\(\s*\w+,\s*"([^"]+)",\s*(?:\'(.)\'|0),\s*[01],\s*([01]),', re.M)


def cases():
    for suffix in ('c', 'i', 'cpp'):
        for path in sorted(glob.glob(os.path.join(HERE, '**', '*.' + suffix), recursive=True)):
            yield path, open(path, errors='replace').read()


class OptionTable:
    def __init__(self):
        rows = OPTION_ROW.findall(open(os.path.join(SOURCE, 'driver', 'options.def')).read())
        self.takes_argument = {name: argument == '1' for name, _, argument in rows}
        self.letters = {letter: name for name, letter, _ in rows if letter}

    def used_in(self, words):
        """The names of the options that the words use; words behind options that take one are skipped."""
        used, words = set(), list(words)
        while words:
            word = words.pop(0)
            if word.startswith('--'):
                text, equals, _ = word[2:].partition('=')
                names = [text] if text in self.takes_argument else [
                    name for name in self.takes_argument if name.startswith(text)]
                if len(names) != 1:
                    continue
                used.add(names[0])
                if self.takes_argument[names[0]] and not equals and words:
                    words.pop(0)
            elif word.startswith('-'):
                for at, letter in enumerate(word[1:], 1):
                    name = self.letters.get(letter)
                    used.add(name)
                    if name and self.takes_argument[name]:
                        if at == len(word) - 1 and words:
                            words.pop(0)
                        break
        return used


def check_options():
    table, used = OptionTable(), set()
    for _, text in cases():
        header = '\n'.join(text.splitlines()[:HEADER_LINES])
        for line in re.findall(r'^\s*(?://|/\*)\s*options:\s*(.*?)\s*(?:\*/)?$', header, re.M):
            used |= table.used_in(shlex.split(line))
    return ['option --%s occurs in no case' % name for name in table.takes_argument if name not in used], len(
        table.takes_argument)


# --- Messages and pragmas -------------------------------------------------------------------------

CASE_SUFFIXES = ('.c', '.i', '.cpp', '.h', '.msg', '.lst', '.txt')
MESSAGE_ROW = re.compile(r'^MESSAGE\(\s*\d+,\s*(\w+),\s*"(.*)"\)', re.M)
SHORTEST_TEXT = 12  # of a piece of a message that is looked for in goldens


def text_of_cases():
    """Everything that a case or a golden says; the lists of exceptions are no cases."""
    texts = []
    for path in sorted(glob.glob(os.path.join(HERE, '**', '*'), recursive=True)):
        if path.endswith(CASE_SUFFIXES) and '_without_case' not in path and '/unit/' not in path:
            texts.append(open(path, errors='replace').read())
    return '\n'.join(texts)


def exceptions(name):
    """{row: reason} of a list of rows without a case."""
    rows = {}
    for line in open(os.path.join(HERE, name)):
        row, _, reason = line.strip().partition('  ')
        if row and not row.startswith('#'):
            rows[row] = reason.strip()
    return rows


def against_exceptions(kind, rows, has_case, list_name):
    """Complaints and the number of rows: each has a case or stands in the list with a reason, never both."""
    excepted, complaints = exceptions(list_name), []
    for row in rows:
        if has_case(row) and row in excepted:
            complaints.append('%s %s has a case and stands in %s' % (kind, row, list_name))
        elif not has_case(row) and not excepted.get(row):
            complaints.append('%s %s occurs in no case' % (kind, row))
    complaints += ['%s: %s is no row that the sources use' % (list_name, row) for row in excepted if row not in rows]
    return complaints, len(rows) + sum(row not in rows for row in excepted)


def longest_piece(text):
    return max(re.split(r'%\w+|\\?"', text), key=len).strip()


def check_messages():
    used = set()
    for path in glob.glob(os.path.join(SOURCE, '**', '*.cpp'), recursive=True):
        used |= set(re.findall(r'\bec_(\w+)', open(path).read()))
    texts = dict(MESSAGE_ROW.findall(open(os.path.join(SOURCE, 'errors', 'messages.def')).read()))
    said = text_of_cases()
    words = set(re.findall(r'\w+', said))

    def has_case(tag):
        piece = longest_piece(texts[tag])
        return tag in words or (len(piece) > SHORTEST_TEXT and piece in said)

    return against_exceptions('message', [tag for tag in texts if tag in used and tag != 'no_error'], has_case,
                              'messages_without_case.txt')


def check_pragmas():
    names = re.findall(r'^PRAGMA_ID\(\w+,\s*"([^"]+)"\)', open(os.path.join(SOURCE, 'lex', 'pragmas.def')).read(), re.M)
    said = text_of_cases()

    def has_case(name):
        return re.search(r'(#\s*pragma|_Pragma\s*\(\s*"|/\*|//)\s*%s\b' % re.escape(name), said) is not None

    return against_exceptions('pragma', names, has_case, 'pragmas_without_case.txt')


CHECKS = [check_options, check_messages, check_pragmas]


def main():
    passed = failed = 0
    for check in CHECKS:
        missing, count = check()
        for line in missing:
            print(line)
        passed += count - len(missing)
        failed += len(missing)
    print('tables: %d passed, %d failed, 0 skipped' % (passed, failed))
    return 1 if failed else 0


if __name__ == '__main__':
    sys.exit(main())
