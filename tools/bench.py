"""The table of ./bench: times are user plus system seconds, medians of five runs in one sitting."""
import os
import resource
import shutil
import statistics
import subprocess
import sys
import tempfile

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
sys.path.insert(0, os.path.join(ROOT, 'tests'))
import support

RVPARSE = os.path.join(ROOT, 'build', 'rvparse')
RUNS = 5
GROWTH = (4, 16)  # multiples of the basic input: long enough that the clock's grain doesn't count


def run_once(command, cwd=None):
    """(CPU seconds, peak MiB); None when the command fails."""
    process = subprocess.Popen(command, cwd=cwd, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    _, status, usage = os.wait4(process.pid, 0)
    if os.waitstatus_to_exitcode(status) != 0:
        return None
    return usage.ru_utime + usage.ru_stime, usage.ru_maxrss / 1024


def measure(command, cwd=None):
    """(median CPU seconds, peak MiB); None when the command fails."""
    runs = [run_once(command, cwd) for _ in range(RUNS)]
    if None in runs:
        return None
    return statistics.median(r[0] for r in runs), max(r[1] for r in runs)


def measure_pair(small, large):
    """Least CPU seconds of each command.  The runs alternate, so that both see the same machine."""
    runs = [(run_once(small), run_once(large)) for _ in range(RUNS)]
    if any(None in pair for pair in runs):
        return None
    return min(pair[0][0] for pair in runs), min(pair[1][0] for pair in runs)


def inputs():
    """(name, [sources], flags, dialect options of rvparse)."""
    found = []
    sqlite = support.npm_package('better-sqlite3')
    if sqlite:
        found.append(('sqlite3.c', [sqlite + '/deps/sqlite3/sqlite3.c'], ['-DSQLITE_THREADSAFE=0'], []))
    grammar = support.npm_package('tree-sitter-c')
    if grammar:
        found.append(('parser.c', [grammar + '/src/parser.c'], ['-I' + grammar + '/src'], ['--c99']))
    expat = support.npm_package('node-expat')
    if expat:
        folder = expat + '/deps/libexpat'
        found.append(('libexpat', [folder + '/lib/' + n for n in ('xmlparse.c', 'xmlrole.c', 'xmltok.c')],
                      ['-I' + folder, '-DHAVE_MEMMOVE', '-DXML_POOR_ENTROPY'], []))
    return found


def total(commands):
    results = [measure(c) for c in commands]
    if None in results:
        return None
    return sum(r[0] for r in results), max(r[1] for r in results)


def show(label, own, reference, limit):
    if own is None or reference is None:
        print('%-42s %s' % (label, 'failed' if own is None else 'no reference'))
        return
    ratio = own[0] / max(reference[0], 1e-6)
    mark = '' if limit is None else ('ok' if ratio <= limit else 'OVER %.2f' % limit)
    print('%-42s %7.3f s %7.3f s  ratio %5.2f  %5.1f MiB  %s' % (label, own[0], reference[0], ratio, own[1], mark))


def compare_with_compilers():
    includes = support.system_includes()
    cross = [support.ARM_GCC, '-w', '-std=gnu99']
    others = [('clang -fsyntax-only', ['clang-14', '--target=arm-linux-gnueabihf', '-w', '-fsyntax-only', '-std=gnu99']),
              ('tcc -c', ['tcc', '-w', '-c', '-o', '/dev/null']), ('sparse', ['sparse', '-w'])]
    with tempfile.TemporaryDirectory() as work:
        for name, sources, flags, dialect in inputs():
            own = [RVPARSE, '-w'] + support.TRANSLATE + includes + dialect + flags
            generated = '--gen_c_file_name=' + os.path.join(work, 'x.int.c')
            reference_e = total([cross + flags + ['-E', s] for s in sources])
            reference = total([cross + flags + ['-fsyntax-only', s] for s in sources])
            print('%s (own time, gcc time)' % name)
            show('  preprocess only', total([own + ['-E', s] for s in sources]), reference_e, 0.6)
            checked = total([own + ['--no_code_gen', s] for s in sources])
            show('  parse and check', checked, reference, 0.5)
            show('  source to generated C', total([own + [generated, s] for s in sources]), reference, 0.8)
            for label, command in others:
                if shutil.which(command[0]):
                    show('  parse and check against ' + label, checked, total([command + flags + [s] for s in sources]), None)


def empty_file():
    with tempfile.TemporaryDirectory() as work:
        source = os.path.join(work, 'empty.c')
        open(source, 'w').close()

        def wall(command):
            script = ('import subprocess,time\nb=[]\nfor _ in range(200):\n t=time.perf_counter()\n subprocess.run(%r,'
                      'stdout=-3,stderr=-3)\n b.append(time.perf_counter()-t)\nb.sort()\nprint(b[100])' % (command,))
            return float(subprocess.run([sys.executable, '-c', script], capture_output=True, text=True).stdout)

        own, base = wall([RVPARSE, source]), wall(['/bin/true'])
        # A process forked by this one starts with this one's pages; the shell's own child doesn't.
        peak = int(subprocess.run(['/usr/bin/time', '-f', '%M', RVPARSE, source], capture_output=True,
                                  text=True).stderr.split()[-1]) / 1024 if shutil.which('/usr/bin/time') else 0.0
        print('%-42s %.2f ms more than /bin/true, %.1f MiB' % ('empty file', (own - base) * 1000, peak))


# ---- Growth: four times the input ----

def many_functions(n):
    return ''.join('int f%d(int a, int b) { int c = a * %d + b; if (c > 3) c -= a; return c; }\n' % (i, i)
                   for i in range(n * 2000))


def huge_function(n):
    return 'int f(int a) {\n' + ''.join('  a = a * %d + 1; if (a > %d) a -= 7;\n' % (i, i)
                                        for i in range(n * 4000)) + '  return a;\n}\n'


def huge_initializer(n):
    return 'int t[] = {\n' + ''.join('%d, %d, -%d,\n' % (i, i * 3, i) for i in range(n * 15000)) + '};\n'


def many_macros(n):
    return ''.join('#define M%d(x) (x + %d)\n' % (i, i) for i in range(n * 4000)) + \
        ''.join('int v%d = M%d(1);\n' % (i, i) for i in range(n * 4000))


def long_expansions(n):
    return '#define A(x) x + x + x + x\n#define B(x) A(x) + A(x) + A(x)\n#define C(x) B(x) + B(x)\n' + \
        ''.join('int v%d = C(%d);\n' % (i, i) for i in range(n * 500))


def one_long_expansion(n):
    return '#define T ' + ' + '.join(['1'] * (n * 5000)) + '\nint v = T;\n'


def many_identifiers(n):
    return ''.join('int name_of_variable_%d;\n' % i for i in range(n * 20000))


def include_tree(folder, headers):
    """Headers in chains of a hundred, and a source that includes them all."""
    os.mkdir(folder)
    for level in range(headers):
        lines = '#ifndef H%d\n#define H%d\n' % (level, level)
        if level + 1 < headers and (level + 1) % 100:
            lines += '#include "h%d.h"\n' % (level + 1)
        open(os.path.join(folder, 'h%d.h' % level), 'w').write(lines + 'int x%d;\n#endif\n' % level)
    source = os.path.join(folder, 'main.c')
    open(source, 'w').write(''.join('#include "h%d.h"\n' % level for level in range(headers)))
    return source


def growth():
    cases = [many_functions, huge_function, huge_initializer, many_macros, long_expansions, one_long_expansion,
             many_identifiers]
    with tempfile.TemporaryDirectory() as work:
        translate = [RVPARSE, '-w', '--gen_c_file_name=' + os.path.join(work, 'g.int.c')]
        for case in cases:
            sources = []
            for factor in GROWTH:
                sources.append(os.path.join(work, 'g%d.c' % factor))
                open(sources[-1], 'w').write(case(factor))
            report_growth(case.__name__, measure_pair(*[translate + [s] for s in sources]))
        trees = [include_tree(os.path.join(work, 'tree%d' % factor), factor * 150) for factor in GROWTH]
        report_growth('deep_include_trees', measure_pair(*[translate + [t] for t in trees]))


def report_growth(name, times):
    if times is None:
        print('%-42s failed' % name)
        return
    ratio = times[1] / max(times[0], 1e-4)
    print('%-42s %7.3f s -> %7.3f s  x %4.2f  %s' % ('four times ' + name, times[0], times[1], ratio,
                                                    'ok' if ratio <= 4.4 else 'OVER 4.4'))


def main():
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    compare_with_compilers()
    empty_file()
    growth()


main()
