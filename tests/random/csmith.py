"""Random programs: the translated program must print what the direct build prints.

    csmith.py --from 1 --to 30

The seed also chooses which of the generator's options a program is made with.
"""
import os
import shutil
import subprocess
import sys
import tempfile

sys.path.insert(0, os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
import support

CSMITH_INCLUDE = '/usr/include/csmith'
OPTIONS = ['--concise']
VARIATIONS = [
    ['--no-packed-struct'],
    ['--packed-struct', '--no-unions', '--max-struct-fields', '20'],
    ['--no-packed-struct', '--float', '--builtins'],
    ['--no-packed-struct', '--max-block-depth', '7', '--max-expr-complexity', '20', '--inline-function'],
    ['--packed-struct', '--max-union-fields', '8', '--no-safe-math', '--no-divs', '--no-muls'],
    ['--no-packed-struct', '--max-array-dim', '4', '--max-pointer-depth', '4', '--no-volatiles', '--paranoid'],
    ['--no-packed-struct', '--max-struct-fields', '30', '--max-funcs', '4', '--volatile-pointers', '--no-argc'],
]


def options_of(seed):
    return OPTIONS + VARIATIONS[seed % len(VARIATIONS)]


def check(rvparse, seed):
    with tempfile.TemporaryDirectory() as work:
        source = os.path.join(work, 'random.c')
        done = support.run(['csmith', '--seed', str(seed), '-o', source] + options_of(seed), cwd=work)
        if done.returncode != 0:
            return 'csmith failed'
        direct, made = os.path.join(work, 'direct'), os.path.join(work, 'made')
        done = support.run(support.DIRECT + ['-I' + CSMITH_INCLUDE, source, '-o', direct])
        if done.returncode != 0:
            return None  # not a program of this target
        wanted = support.run(support.RUN + [direct], timeout=20)
        if wanted.returncode == 124:
            return None
        generated = os.path.join(work, 'random.int.c')
        done = support.translate(rvparse, source, generated, ['--sys_include=' + CSMITH_INCLUDE])
        if support.crashed(done) or done.returncode != 0:
            return 'translation: %s' % done.stderr.decode(errors='replace')[:300]
        done = support.run(support.COMPILE + [generated, '-o', made])
        if done.returncode != 0:
            return 'generated C: %s' % done.stderr.decode(errors='replace')[:300]
        found = support.run(support.RUN + [made], timeout=60)
        if (found.stdout, found.returncode) != (wanted.stdout, wanted.returncode):
            return 'prints %r, directly built %r' % (found.stdout[-60:], wanted.stdout[-60:])
    return None


def main():
    options = support.arguments('random programs', ('--from', dict(type=int, default=1, dest='first')),
                                ('--to', dict(type=int, default=30, dest='last')))
    if not support.have_cross_tools() or not shutil.which('csmith'):
        print('SKIPPED: no csmith or no cross compiler')
        support.finish('csmith', 0, 0, 1)
    seeds = range(options.first, options.last + 1)
    results = support.in_parallel(lambda seed: (seed, check(options.rvparse, seed)), seeds)
    failures = [(seed, why) for seed, why in results if why]
    for seed, why in failures:
        print('seed %d: %s' % (seed, why))
    support.finish('csmith', len(results) - len(failures), len(failures))


main()
