"""The C library's headers and real programs give the preprocessed tokens that the cross compiler gives with the
same predefined macros.

    headers.py [--sample 250]
"""
import os
import random
import re
import sys
import tempfile

sys.path.insert(0, os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
import support

TOKEN = re.compile(rb'''[A-Za-z_$\x80-\xff][\w$\x80-\xff]*|\.?\d(?:[eEpP][+-]|[\w.])*|L?"(?:\\.|[^"\\\n])*"'''
                   rb'''|L?'(?:\\.|[^'\\\n])*'|->\*?|\+\+|--|<<=|>>=|<<|>>|<=|>=|==|!=|&&|\|\||\.\.\.'''
                   rb'''|[-+*/%&|^]=|##|::|\S''')
# What the cross compiler takes in without printing it.
EATEN = re.compile(rb'^\s*#\s*pragma\s+GCC\s+system_header\s*$', re.M)
# The cross compiler has these whatever it is told.
UNWANTED = ['__has_attribute', '__has_include', '__has_include_next', '__has_builtin', '__has_cpp_attribute']
KEPT = re.compile(rb'#define (__STDC__|__STDC_HOSTED__|__FILE__|__LINE__)\b')


def write_predefined(options, path):
    empty = path + '.c'
    open(empty, 'w').close()
    listed = support.run([options.rvparse] + support.TRANSLATE + ['--list_macros', empty]).stdout
    lines = [line for line in listed.splitlines() if not KEPT.match(line)]
    lines += [b'#undef ' + name.encode() for name in UNWANTED]
    open(path, 'wb').write(b'\n'.join(lines) + b'\n')


def check(options, source, include_dirs=()):
    """A complaint, None if all is well, or False if the cross compiler refuses the source."""
    includes = ['-I' + d for d in include_dirs]
    system = [i.split('=', 1)[1] for i in support.system_includes()]
    wanted = support.run([support.ARM_GCC, '-E', '-P', '-undef', '-nostdinc', '-std=gnu89', '-D_FORTIFY_SOURCE=0',
                          '-imacros', options.predefined] + includes +
                         [w for d in system for w in ('-isystem', d)] + [source])
    if wanted.returncode:
        return False
    made = support.run([options.rvparse] + support.TRANSLATE + ['-P'] + includes + support.system_includes() + [source])
    a = TOKEN.findall(EATEN.sub(b'', made.stdout))
    b = TOKEN.findall(EATEN.sub(b'', wanted.stdout))
    if made.returncode == 0 and a == b:
        return None
    at = next((i for i, (x, y) in enumerate(zip(a, b)) if x != y), min(len(a), len(b)))
    return 'exit %d, token %d: %r instead of %r' % (made.returncode, at, a[at:at + 6], b[at:at + 6])


def headers(options):
    root = os.path.join(support.ARM_ROOT, 'include')
    found = [os.path.relpath(os.path.join(folder, name), root) for folder, _, names in os.walk(root)
             for name in sorted(names) if name.endswith('.h') and '/c++' not in folder]
    found.sort()
    return found if options.sample == 0 else random.Random(1).sample(found, min(options.sample, len(found)))


def programs():
    """Sources of real programs, each with its include folders."""
    sqlite = support.npm_package('better-sqlite3')
    if sqlite:
        yield os.path.join(sqlite, 'deps/sqlite3/sqlite3.c'), []
    expat = support.npm_package('node-expat')
    if expat:
        folder = os.path.join(expat, 'deps/libexpat')
        for name in ('xmlparse.c', 'xmlrole.c', 'xmltok.c'):
            yield os.path.join(folder, 'lib', name), [folder, folder + '/lib']
    lz4 = support.npm_package('lz4')
    if lz4:
        for name in ('lz4.c', 'lz4hc.c', 'lz4frame.c', 'xxhash.c'):
            yield os.path.join(lz4, 'deps/lz4/lib', name), []


def main():
    options = support.arguments('preprocessed headers', ('--sample', dict(type=int, default=0)))
    if not support.have_cross_tools():
        print('SKIPPED: no cross compiler to compare with')
        support.finish('headers', 0, 0, 1)
    with tempfile.TemporaryDirectory() as work:
        options.predefined = os.path.join(work, 'predefined.h')
        write_predefined(options, options.predefined)

        def check_header(item):
            number, header = item
            source = os.path.join(work, 'header%d.c' % number)
            open(source, 'w').write('#include <%s>\n' % header)
            return header, check(options, source)

        results = support.in_parallel(check_header, enumerate(headers(options)))
        results += support.in_parallel(lambda item: (item[0], check(options, *item)), list(programs()))
    failures = [(name, why) for name, why in results if why]
    for name, why in failures[:20]:
        print('%s: %s' % (name, why))
    refused = sum(why is False for _, why in results)
    support.finish('headers', len(results) - len(failures) - refused, len(failures), refused)


main()
