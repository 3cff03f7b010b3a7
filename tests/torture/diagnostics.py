"""GCC's cases of what a C compiler refuses: where a case wants an error this translator gives one, and it gives none in
cases that want none.

    diagnostics.py [--only PATTERN] [--list]

A wanted error counts as given when an error stands on the line or beside it: recovery and carets differ.
"""
import fnmatch
import glob
import os
import re
import sys
import tempfile

sys.path.insert(0, os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
import support
from torture.diagnostics_excluded import EXCLUDED, NOT_GIVEN

SELECTED = ['c90-*.c', 'c99-*.c', 'decl-[0-9]*.c', 'redecl-[0-9]*.c', 'init-bad-*.c', 'init-excess-*.c', 'array-[0-9]*.c',
            'struct-*.c', 'bitfld-[0-9]*.c', 'label-*.c', 'switch-*.c', 'incomplete*.c', 'func-*.c', 'old-style-*.c', 'vla-[0-9]*.c',
            'typedef-*.c', 'sizeof*.c', 'storage*.c', 'declspec-[0-9]*.c', 'qual-*.c', 'cond*.c', 'pointer-*.c', 'union-*.c']
WANTED = re.compile(r'''dg-error\s+"(?:[^"\\]|\\.)*"(?:\s+"[^"]*")?(?:\s+\{(?:[^{}]|\{[^{}]*\})*\})?(?:\s+(\.?[-+]?\d+))?''')
GIVEN = re.compile(r'^(?:"[^"]*", line (\d+)(?: \(col\. \d+\))?|(At end of source)): (?:error|fatal error)', re.M)


def options_for(text):
    """The options that stand for the case's dialect, or None where there is no such dialect."""
    wanted = re.search(r'dg-options\s+"([^"]*)"', text)
    words = wanted.group(1) if wanted else ''
    strict = '--strict' if '-pedantic-errors' in words else '--strict_warnings'
    if re.search(r'-std=(c1|c2|gnu1|gnu2)|-fopen|-ftrack|-Werror|-fgnu-tm|-fplan9|-fms-|-m32|-W\w+-compat', words):
        return None
    if re.search(r'-std=(iso9899:1990|c89|c90|iso9899:199409)|-ansi', words):
        return [strict]
    if re.search(r'-std=(iso9899:1999|c99|c9x)', words):
        return ['--c99', strict] if 'pedantic' in words else ['--c99', '--gcc']
    if '-pedantic-errors' in words:
        return None
    return ['--c99', '--gcc'] if 'gnu99' in words else ['--gcc']


def wanted_lines(text):
    lines = set()
    for number, line in enumerate(text.split('\n'), 1):
        for match in WANTED.finditer(line):
            place = match.group(1)
            lines.add(number if not place else number + int(place[1:]) if place[0] == '.' else int(place))
    return lines


def given_lines(rvparse, path, options, last):
    with tempfile.TemporaryDirectory() as work:
        done = support.run([rvparse, '-n', '--error_limit=99999', '--brief_diagnostics'] + support.TRANSLATE + options +
                           support.system_includes() + [path], cwd=work, timeout=60)
    if support.crashed(done):
        return None
    return {int(line) if line else last for line, _ in GIVEN.findall(done.stderr.decode(errors='replace'))}


def excluded(name, text):
    for pattern, _ in EXCLUDED['files']:
        if fnmatch.fnmatch(name, pattern):
            return True
    return any(re.search(pattern, text) for pattern, _ in EXCLUDED['texts'])


def check(rvparse, path):
    """Complaints about one case; None when it isn't one of this translator's."""
    name, text = os.path.basename(path), open(path, errors='replace').read()
    options = options_for(text)
    if options is None or excluded(name, text):
        return None
    wanted, last = wanted_lines(text), text.count('\n')
    given = given_lines(rvparse, path, options, last)
    if given is None:
        return ['%s: crash' % name]
    tolerated = NOT_GIVEN.get(name, ((), ''))[0]
    missing = [line for line in sorted(wanted) if not given & {line - 1, line, line + 1}]
    problems = ['%s:%d: no error' % (name, line) for line in missing if tolerated != 'all' and line not in tolerated]
    if not wanted:
        problems += ['%s:%d: an error that nobody wants' % (name, line) for line in sorted(given)]
    if tolerated and tolerated != 'all':
        problems += ['%s:%d: is given after all' % (name, line) for line in tolerated if line not in missing]
    return problems


def main():
    options = support.arguments('diagnostics', ('--only', dict(default='*')), ('--list', dict(action='store_true')))
    folder = support.gcc_testsuite('gcc.dg')
    if folder is None:
        support.finish('diagnostics', 0, 0, 1)
    paths = sorted({path for pattern in SELECTED for path in glob.glob(os.path.join(folder, pattern))
                    if fnmatch.fnmatch(os.path.basename(path), options.only)})
    results = support.in_parallel(lambda path: check(options.rvparse, path), paths)
    failed = [problems for problems in results if problems]
    for problem in sum(failed, []):
        print(problem)
    passed = sum(problems == [] for problems in results)
    support.finish('diagnostics', passed, len(failed), len(paths) - passed - len(failed))


if __name__ == '__main__':
    main()
