"""Random programs of what csmith doesn't write: GNU and C99 constructs, conversions, calls in all forms.

    dialect.py --from 1 --count 40 [--keep FOLDER]

The translated program must print what the direct build prints.  Nothing that is written depends on an order of
evaluation, on signed overflow (it wraps) or on the layout of objects.
"""
import os
import shutil
import sys
import tempfile

sys.path.insert(0, os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
import support
from random_program import Program  # noqa: E402


def first_difference(wanted, found):
    for mine, theirs in zip(found.splitlines(), wanted.splitlines()):
        if mine != theirs:
            return 'prints %r, directly built %r' % (mine, theirs)
    return 'prints %d lines, directly built %d' % (found.count(b'\n'), wanted.count(b'\n'))


def check(rvparse, seed, keep):
    with tempfile.TemporaryDirectory() as work:
        source = os.path.join(work, 'random%d.c' % seed)
        with open(source, 'w') as file:
            file.write(Program(seed, gnu=seed % 4 != 3).text())
        direct, made = os.path.join(work, 'direct'), os.path.join(work, 'made')
        generated = os.path.join(work, 'random.int.c')
        problem = run(rvparse, seed, source, direct, generated, made)
        if problem and keep:
            shutil.copy(source, keep)
        return problem


def run(rvparse, seed, source, direct, generated, made):
    # (of the direct build, of the translation, of the generated C)
    char, ours, theirs = [(['-funsigned-char'], [], []), (['-fsigned-char'], ['--signed_chars'], ['-fsigned-char']),
                          (['-funsigned-char'], ['--noenhance'], [])][seed % 3]
    done = support.run(support.DIRECT + char + ['-std=gnu99', source, '-o', direct, '-lm'])
    if b'internal compiler error' in done.stderr:
        return None
    if done.returncode != 0:
        return 'direct build: %s' % done.stderr.decode(errors='replace')[:300]
    wanted = support.run(support.RUN + [direct], timeout=20)
    if wanted.returncode != 0:
        return 'direct run: exit %d' % wanted.returncode
    dialect = '--no_gcc' if seed % 4 == 3 else '--gcc'
    done = support.translate(rvparse, source, generated, ['--c99', dialect, '--no_warnings'] + ours)
    if support.crashed(done) or done.returncode != 0:
        return 'translation: %s' % done.stderr.decode(errors='replace')[:300]
    done = support.run(support.COMPILE + theirs + [generated, '-o', made, '-lm'])
    if done.returncode != 0:
        return 'generated C: %s' % done.stderr.decode(errors='replace')[:300]
    found = support.run(support.RUN + [made], timeout=60)
    if (found.stdout, found.returncode) != (wanted.stdout, wanted.returncode):
        return first_difference(wanted.stdout, found.stdout)
    return None


def main():
    options = support.arguments('random programs of the dialect',
                                ('--from', dict(type=int, default=1, dest='first')),
                                ('--count', dict(type=int, default=40)),
                                ('--keep', dict(help='folder for the programs that fail')))
    if not support.have_cross_tools():
        print('SKIPPED: no cross compiler')
        support.finish('dialect', 0, 0, 1)
    seeds = range(options.first, options.first + options.count)
    results = support.in_parallel(lambda seed: (seed, check(options.rvparse, seed, options.keep)), seeds)
    failures = [(seed, why) for seed, why in results if why]
    for seed, why in failures:
        print('seed %d: %s' % (seed, why))
    support.finish('dialect', len(results) - len(failures), len(failures))


main()
