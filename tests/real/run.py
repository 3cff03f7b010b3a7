"""Real programs: each is built from generated C and directly, and must do the same.

    run.py [--only NAME]    headers, sqlite, expat, lz4, tree-sitter
"""
import os
import sys
import tempfile

sys.path.insert(0, os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
import support
from real.elf import objects

INPUTS = os.path.join(os.path.dirname(os.path.abspath(__file__)), 'Inputs')


class Failure(Exception):
    pass


def must(done, what):
    if done.returncode != 0:
        raise Failure('%s (exit %d)\n%s' % (what, done.returncode,
                                            (done.stderr + done.stdout).decode(errors='replace')[-3000:]))
    return done


def build_both(options, work, sources, flags, program):
    """The two programs: from generated C, and directly.  Flags are -I and -D for both."""
    objects_made = []
    for source in sources:
        generated = os.path.join(work, os.path.basename(source)[:-2] + '.int.c')
        must(support.translate(options.rvparse, source, generated, flags, timeout=300), 'translation of ' + source)
        target = generated[:-2] + '.o'
        must(support.run(support.COMPILE + ['-O1', '-c', generated, '-o', target], timeout=600),
             'generated C of ' + source)
        objects_made.append(target)
    made, direct = os.path.join(work, program + '.made'), os.path.join(work, program + '.direct')
    must(support.run(support.COMPILE + objects_made + ['-o', made, '-lm']), 'link')
    must(support.run(support.DIRECT + ['-O1'] + flags + sources + ['-o', direct, '-lm'], timeout=600), 'direct build')
    return made, direct


def same_output(made, direct, arguments, cwd=None, timeout=600):
    found = support.run(support.RUN + [made] + arguments, cwd=cwd, timeout=timeout)
    wanted = support.run(support.RUN + [direct] + arguments, cwd=cwd, timeout=timeout)
    if (found.returncode, found.stdout) != (wanted.returncode, wanted.stdout):
        raise Failure('differs: exit %d and %d\n%s' % (found.returncode, wanted.returncode, found.stdout[-1500:].decode(errors='replace')))
    return wanted


def sqlite(options, work):
    package = support.npm_package('better-sqlite3')
    if package is None:
        return False
    folder = os.path.join(package, 'deps', 'sqlite3')
    flags = ['-I' + folder, '-DSQLITE_THREADSAFE=0', '-DSQLITE_OMIT_LOAD_EXTENSION=1']
    made, direct = build_both(options, work, [os.path.join(folder, 'sqlite3.c'), os.path.join(INPUTS, 'sql_shell.c')],
                              flags, 'sql')
    done = same_output(made, direct, [os.path.join(INPUTS, 'script.sql')])
    if b'CHECK constraint failed' not in done.stdout:
        raise Failure('the script did not run to its end')
    return True


def expat(options, work):
    package = support.npm_package('node-expat')
    if package is None:
        return False
    folder = os.path.join(package, 'deps', 'libexpat')
    flags = ['-I' + os.path.join(folder, 'lib'), '-I' + os.path.join(folder, 'tests'), '-I' + folder,
             '-DHAVE_MEMMOVE=1', '-DBYTEORDER=1234', '-DXML_NS=1', '-DXML_DTD=1', '-DXML_CONTEXT_BYTES=1024',
             '-DHAVE_GETRANDOM=0', '-DXML_POOR_ENTROPY=1', '-DHAVE_UNISTD_H=1', '-DHAVE_STDINT_H=1']
    sources = [os.path.join(folder, 'lib', n) for n in ('xmlparse.c', 'xmlrole.c', 'xmltok.c')]
    sources += [os.path.join(folder, 'tests', n) for n in ('runtests.c', 'chardata.c', 'minicheck.c', 'memcheck.c')
                if os.path.exists(os.path.join(folder, 'tests', n))]
    made, direct = build_both(options, work, sources, flags, 'expat')
    done = same_output(made, direct, [], cwd=work)
    if done.returncode != 0:
        raise Failure('the test suite fails in the direct build too')
    return True


def lz4(options, work):
    package = support.npm_package('lz4')
    if package is None:
        return False
    folder = os.path.join(package, 'deps', 'lz4')
    library = [os.path.join(folder, 'lib', n) for n in ('lz4.c', 'lz4hc.c', 'lz4frame.c', 'xxhash.c')]
    flags = ['-I' + os.path.join(folder, 'lib'), '-I' + os.path.join(folder, 'programs')]
    made, direct = build_both(options, work, library + [os.path.join(INPUTS, 'lz4_round_trip.c')], flags, 'trip')
    same_output(made, direct, [])
    made, direct = build_both(options, work, library + [os.path.join(folder, 'tests', 'frametest.c')],
                              flags + ['-DXXH_NAMESPACE=LZ4_'], 'frametest')
    done = support.run(support.RUN + [made, '-i30', '-s1', '-v'], timeout=900)
    must(done, 'frame tests')
    return True


def tree_sitter(options, work):
    package = support.npm_package('tree-sitter-c')
    if package is None:
        return False
    source = os.path.join(package, 'src', 'parser.c')
    flags = ['-I' + os.path.join(package, 'src')]
    generated = os.path.join(work, 'parser.int.c')
    must(support.translate(options.rvparse, source, generated, flags + ['--c99'], timeout=300), 'translation')
    must(support.run(support.COMPILE + ['-O0', '-c', generated, '-o', os.path.join(work, 'made.o')], timeout=600),
         'generated C')
    must(support.run(support.DIRECT + ['-O0'] + flags + ['-c', source, '-o', os.path.join(work, 'direct.o')],
                     timeout=600), 'direct build')
    made, direct = objects(os.path.join(work, 'made.o')), objects(os.path.join(work, 'direct.o'))
    for name in sorted(direct):
        if '.' in name or name.startswith('__func'):
            continue
        if name not in made:
            raise Failure('no object %s' % name)
        if made[name] != direct[name]:
            raise Failure('object %s differs' % name)
    if not direct:
        raise Failure('no objects found')
    return True


def headers(options, work):
    """Every public header that the cross compiler accepts alone passes without an error."""
    root = os.path.join(support.ARM_ROOT, 'include')
    names = []
    for where, folders, files in os.walk(root):
        folders[:] = [f for f in folders if f not in ('c++', 'bits', 'gnu')]
        names += [os.path.relpath(os.path.join(where, f), root) for f in files if f.endswith('.h')]

    def check(name):
        source = os.path.join(work, name.replace('/', '_') + '.c')
        open(source, 'w').write('#include <%s>\n' % name)
        gcc = support.run([support.ARM_GCC, '-std=gnu89', '-fsyntax-only', '-w', source])
        if gcc.returncode != 0:
            return None
        done = support.translate(options.rvparse, source, source[:-2] + '.int.c')
        if done.returncode != 0 or support.crashed(done):
            return '%s: %s' % (name, done.stderr.decode(errors='replace')[:400])
        return None

    bad = [b for b in support.in_parallel(check, sorted(names)) if b]
    if bad:
        raise Failure('%d of %d headers\n%s' % (len(bad), len(names), '\n'.join(bad[:20])))
    return True


def main():
    options = support.arguments('real programs', ('--only', dict(default=None)))
    if not support.have_cross_tools():
        print('SKIPPED: no cross compiler')
        support.finish('real programs', 0, 0, 1)
    passed = failed = skipped = 0
    for program in (headers, sqlite, expat, lz4, tree_sitter):
        if options.only and program.__name__ != options.only:
            continue
        with tempfile.TemporaryDirectory() as work:
            try:
                if program(options, work):
                    passed += 1
                else:
                    skipped += 1
            except Failure as failure:
                failed += 1
                print('%s: %s' % (program.__name__, failure))
    support.finish('real programs', passed, failed, skipped)


main()
