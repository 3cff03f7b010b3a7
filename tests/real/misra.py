"""Real programs under all rules of MISRA-C:2004: no crash, the same generated C, and how often each rule was broken."""
import collections
import os
import re
import sys
import tempfile

sys.path.insert(0, os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
import support

RULE = re.compile(r'^"([^"]*)", line \d+(?: \(col\. \d+\))?: \w+: \(MISRA-C:2004 (\d+)\.(\d+)/')
# What any real program breaks; none of these may stay silent.
CERTAIN = [(6, 3), (10, 1), (12, 1), (14, 7), (16, 7), (17, 4), (19, 4), (19, 7)]


def sources():
    """(file, flags) of the libraries."""
    expat, lz4 = support.npm_package('node-expat'), support.npm_package('lz4')
    if expat:
        folder = os.path.join(expat, 'deps', 'libexpat')
        flags = ['-I' + os.path.join(folder, 'lib'), '-I' + folder, '-DHAVE_MEMMOVE=1', '-DBYTEORDER=1234', '-DXML_NS=1',
                 '-DXML_DTD=1', '-DXML_CONTEXT_BYTES=1024', '-DXML_POOR_ENTROPY=1', '-DHAVE_UNISTD_H=1', '-DHAVE_STDINT_H=1']
        yield from ((os.path.join(folder, 'lib', n), flags) for n in ('xmlparse.c', 'xmlrole.c', 'xmltok.c'))
    if lz4:
        folder = os.path.join(lz4, 'deps', 'lz4', 'lib')
        yield from ((os.path.join(folder, n), ['-I' + folder]) for n in ('lz4.c', 'lz4hc.c', 'lz4frame.c', 'xxhash.c'))


def check(options, work, source, flags, counts):
    """What is wrong with the translation under all rules, or None."""
    made = [os.path.join(work, name) for name in ('off.int.c', 'on.int.c')]
    plain = support.translate(options.rvparse, source, made[0], flags)
    checked = support.translate(options.rvparse, source, made[1], flags + ['--check_misra=all'])
    if support.crashed(checked) or checked.returncode != plain.returncode or plain.returncode != 0:
        return 'status %d and %d\n%s' % (plain.returncode, checked.returncode, checked.stderr.decode(errors='replace')[-2000:])
    for line in checked.stderr.decode(errors='replace').splitlines():
        found = RULE.match(line)
        if found:
            counts[int(found.group(2)), int(found.group(3))] += 1
            if found.group(1).startswith('/usr/'):
                return 'a rule is broken in a header of the system: ' + line
    if open(made[0]).read() != open(made[1]).read():
        return 'the generated C differs'
    return None


def main():
    options = support.arguments(__doc__)
    counts, passed, failed = collections.Counter(), 0, 0
    with tempfile.TemporaryDirectory() as work:
        for source, flags in sources():
            problem = check(options, work, source, flags, counts)
            if problem:
                print('%s: %s' % (os.path.basename(source), problem))
            failed += bool(problem)
            passed += not problem
    rows = ['%d.%d: %d' % (rule + (count,)) for rule, count in sorted(counts.items())]
    print('\n'.join('  '.join('%-12s' % row for row in rows[i:i + 8]).rstrip() for i in range(0, len(rows), 8)))
    silent = [rule for rule in CERTAIN if passed and not counts[rule]]
    for rule in silent:
        print('rule %d.%d was never broken' % rule)
    failed += len(silent)
    support.finish('MISRA-C:2004 on real programs', passed, failed, 0 if passed + failed else 1)


main()
