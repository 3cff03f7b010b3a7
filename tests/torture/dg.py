"""GCC's run-time cases of gcc.dg through rvparse: what the direct build runs to exit 0, the translated one must too.

    dg.py [--sample N] [--only PATTERN] [--list]

A case that rvparse rejects lies outside the dialect unless it is meant to be found; --list prints those with their
first error.  Only wrong results, crashes and generated C that doesn't compile fail.
"""
import fnmatch
import os
import random
import re
import sys
import tempfile

sys.path.insert(0, os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
import support
from torture.excluded import EXCLUDED_BY_COMMENT, EXCLUDED_BY_TEXT, EXCLUDED_DG

# Folders of other languages, machines and of what only an optimizer is asked.
NOT_OURS = ('plugin', 'ubsan', 'asan', 'tsan', 'gomp', 'goacc', 'simulate-thread', 'atomic', 'analyzer', 'lto', 'tm',
            'dfp', 'fixed-point', 'charset', 'compat', 'pch', 'graphite', 'weak', 'tls', 'vmx')


def split_comments(text):
    comments = ' '.join(re.findall(r'/\*.*?\*/|//[^\n]*', text, flags=re.S))
    return re.sub(r'/\*.*?\*/', ' ', text, flags=re.S), comments


def excluded(short, text):
    code, comments = split_comments(text)
    if any(fnmatch.fnmatch(short, pattern) for pattern, _ in EXCLUDED_DG):
        return True
    return (any(re.search(p, code) for p, _ in EXCLUDED_BY_TEXT) or
            any(re.search(p, comments) for p, _ in EXCLUDED_BY_COMMENT) or
            'dg-additional-sources' in text)


def select(folder):
    selected = []
    for where, folders, files in os.walk(folder):
        folders[:] = [f for f in folders if f not in NOT_OURS]
        for name in sorted(files):
            path = os.path.join(where, name)
            if not name.endswith('.c') or name.endswith('.int.c'):
                continue
            text = open(path, errors='replace').read()
            if not re.search(r'dg-do\s+run', text) and '/torture' not in path:
                continue
            if re.search(r'dg-do\s+(compile|preprocess|assemble|link)', text):
                continue
            short = os.path.relpath(path, folder)
            if not excluded(short, text):
                selected.append(short)
    return sorted(selected)


def dialect_of(text):
    """(options of the direct build, options of the translation)."""
    wanted = ' '.join(re.findall(r'dg-(?:additional-)?options\s+"([^"]*)"', text))
    defines = re.findall(r'-[DU]\S+', wanted)
    std = re.search(r'-std=(\S+)', wanted)
    std = std.group(1) if std else 'gnu99'
    passed_on = [o for o in wanted.split() if o in ('-fwrapv', '-fno-builtin', '-funsigned-char', '-fsigned-char')]
    ours = {'gnu89': ['--gcc'], 'gnu90': ['--gcc'], 'c89': ['--gcc'], 'c90': ['--gcc']}.get(std, ['--c99', '--gcc'])
    if '-fsigned-char' in wanted:
        ours = ours + ['--signed_chars']
    return ['-std=' + std] + passed_on + defines, ours + defines


def check(rvparse, folder, short):
    """(kind, text): '' when the case holds, 'outside', or a fault."""
    source = os.path.join(folder, short)
    direct_options, options = dialect_of(open(source, errors='replace').read())
    here = os.path.dirname(source)
    with tempfile.TemporaryDirectory() as work:
        direct, made = os.path.join(work, 'direct'), os.path.join(work, 'made')
        generated = os.path.join(work, 'case.int.c')
        done = support.run(support.DIRECT + ['-O0'] + direct_options + [source, '-o', direct, '-lm'], cwd=here)
        if done.returncode != 0 or support.run(support.RUN + [direct], cwd=work, timeout=20).returncode != 0:
            return '', ''  # it asks for another target
        done = support.translate(rvparse, source, generated, ['--no_warnings'] + options, timeout=60)
        if support.crashed(done):
            return 'crash', done.stderr.decode(errors='replace')[:200]
        if done.returncode != 0:
            lines = done.stderr.decode(errors='replace').splitlines()
            return 'outside', next((l for l in lines if 'error' in l), '?')
        done = support.run(support.COMPILE + [generated, '-o', made, '-lm'])
        if done.returncode != 0:
            lines = done.stderr.decode(errors='replace').splitlines()
            return 'generated C', next((l for l in lines if 'error' in l or 'undefined' in l), '?')
        done = support.run(support.RUN + [made], cwd=work, timeout=60)
        if done.returncode != 0:
            return 'wrong result', 'exit %d' % done.returncode
    return '', ''


def main():
    options = support.arguments(
        'run-time cases', ('--sample', dict(type=int, default=0, help='a seeded choice of N cases')),
        ('--only', dict(default='*', help='pattern of cases')),
        ('--list', dict(action='store_true', help='print what is rejected, too')))
    folder = support.gcc_testsuite('gcc.dg') if support.have_cross_tools() else None
    if folder is None:
        print('SKIPPED: no cross compiler or no sources')
        support.finish('dg', 0, 0, 1)
    selected = [s for s in select(folder) if fnmatch.fnmatch(s, options.only)]
    if options.sample and options.sample < len(selected):
        selected = sorted(random.Random(1).sample(selected, options.sample))
    results = support.in_parallel(lambda s: (s,) + check(options.rvparse, folder, s), selected)
    failures = [r for r in results if r[1] not in ('', 'outside')]
    outside = [r for r in results if r[1] == 'outside']
    for short, kind, text in failures + (outside if options.list else []):
        print('%s: %s: %s' % (short, kind, text))
    support.finish('dg', len(results) - len(failures) - len(outside), len(failures), len(outside))


main()
