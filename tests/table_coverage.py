"""Shows that each row of the tables occurs in a case: prints what is missing and one summary line.

Options: every spelling of a row of options.def, long or by its letter, stands in the `// options:` lines of a case.
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


CHECKS = [check_options]


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
