"""Names of the generated file, the exit status beside it, and what a signal leaves behind."""
import os
import signal
import subprocess
import sys
import tempfile

import support

# (source, folder's files after the run that the run made)
NAMES = [
    ('x.c', {'x.int.c'}),
    ('noext', {'noext.int.c'}),
    ('.c', {'.int.c'}),
    ('y.z.c', {'y.z.int.c'}),
    ('in.side/plain', {'in.side/plain.int.c'}),
    ('a name.c', {'a name.int.c'}),
]
SIGNALS = [(signal.SIGINT, b'forced exit'), (signal.SIGHUP, b'forced exit'), (signal.SIGTERM, b'received a terminate signal'),
           (signal.SIGSEGV, b'experienced a segmentation fault')]


def files_below(folder):
    return {os.path.relpath(os.path.join(place, name), folder) for place, _, names in os.walk(folder) for name in names}


def made_by_run(rvparse, source, text):
    """(exit status, files that the run made)"""
    with tempfile.TemporaryDirectory() as folder:
        path = os.path.join(folder, source)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        open(path, 'w').write(text)
        run = subprocess.run([rvparse, source], cwd=folder, capture_output=True, timeout=20)
        return run.returncode, files_below(folder) - {source}


def left_after(rvparse, options, text, name='x.int.c'):
    """Is there still what an earlier run wrote under the name of the output?"""
    with tempfile.TemporaryDirectory() as folder:
        open(os.path.join(folder, 'x.c'), 'w').write(text)
        output = os.path.join(folder, name)
        open(output, 'a').write('int old;\n')
        subprocess.run([rvparse] + options + ['x.c'], cwd=folder, capture_output=True, timeout=20)
        return os.path.exists(output)


# (options, source, name of the output, whether an earlier output stays)
STALE = [
    ([], 'int n = ;\n', 'x.int.c', False),
    ([], '#include "nowhere.h"\n', 'x.int.c', False),
    (['--gen_c_file_name=y.c'], 'int n = ;\n', 'y.c', False),
    (['--gen_c_file_name=x.c'], 'int n = ;\n', 'x.c', True),
    (['--no_such_option'], 'int n = ;\n', 'x.int.c', True),
    (['-E'], 'int n = ;\n', 'x.int.c', True),
    (['-n'], 'int n = ;\n', 'x.int.c', True),
]


def stopped_by(rvparse, number):
    """(exit status, error stream, files left) of a run that a signal reaches while it waits for its input."""
    with tempfile.TemporaryDirectory() as folder:
        run = subprocess.Popen([rvparse, '--gen_c_file_name=out.c', '-'], cwd=folder, stdin=subprocess.PIPE, stderr=subprocess.PIPE)
        run.stdin.write(b'int n = ;\n;\n')
        run.stdin.flush()
        run.stderr.readline()  # the message tells that the run has come to the end of what it was given
        run.send_signal(number)
        errors = run.communicate(timeout=20)[1]
        return run.returncode, errors, files_below(folder)


def main():
    options = support.arguments(__doc__)
    problems = []
    for source, made in NAMES:
        found = made_by_run(options.rvparse, source, 'int n = 1;\n')
        if found != (0, made):
            problems.append('%s: %s' % (source, found))
    found = made_by_run(options.rvparse, 'wrong.c', 'int n = ;\n')
    if found != (2, set()):
        problems.append('wrong.c: %s' % (found,))
    for flags, text, name, stays in STALE:
        if left_after(options.rvparse, flags, text, name) != stays:
            problems.append('%s %r: %s %s' % (flags, text, name, 'is gone' if stays else 'is left'))
    for number, text in SIGNALS:
        status, errors, left = stopped_by(options.rvparse, number)
        if status != 2 or text not in errors or left:
            problems.append('%s: %s %s %s' % (number.name, status, errors, left))
    for problem in problems:
        print(problem)
    total = len(NAMES) + 1 + len(STALE) + len(SIGNALS)
    print('output names: %d passed, %d failed, 0 skipped' % (total - len(problems), len(problems)))
    return 1 if problems else 0


if __name__ == '__main__':
    sys.exit(main())
