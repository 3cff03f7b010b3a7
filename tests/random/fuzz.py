"""Mutated inputs: whatever the text, the run ends with a numbered message or success, never by a signal or a hang.

    fuzz.py --count 500 [--seed 1] [--keep FOLDER]
"""
import glob
import os
import random
import re
import sys
import tempfile

sys.path.insert(0, os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
import support

TOKENS = [b'(', b')', b'{', b'}', b'[', b']', b';', b',', b'...', b'#', b'##', b'\\\n', b'"', b"'", b'/*', b'*/', b'//',
          b'struct', b'union', b'enum', b'typedef', b'sizeof', b'__attribute__', b'int', b'void', b'static', b'extern',
          b'return', b'case', b'default:', b'goto x', b'x:', b'if', b'else', b'while', b'for', b'do', b'switch', b'0',
          b'1e999', b'0x', b'077777777777777777777', b'1.0f', b'"\\x', b"'\\400'", b'*', b'&', b'->', b'.', b'=', b'?',
          b':', b'<<', b'-', b'!', b'~', b'#if 1\n', b'#endif\n', b'#define x x(\n', b'#include "x"\n', b'_Pragma("x")',
          b'\0', b'\xff', b'??/', b'__asm__("")', b'({', b'})', b'[1 ... 2] =', b'.x =', b'__typeof__', b'long long',
          b'_Complex', b'L"x"', b'#undef', b'#line 0\n', b'__builtin_offsetof(struct s, x)', b'va_arg(x, int)', b'%']
OPTION_SETS = [[], ['--c99'], ['--strict'], ['-K'], ['-E'], ['--c89'], ['--no_gcc'], ['--remarks'], ['-E', '-C'],
               ['--check_misra=all'], ['--check_misra=all', '--no_brief_diagnostics', '--trigraphs'],
               ['--check_misra=all', '--c99', '--misra_required=error', '-DF(x)=x']]


def seeds():
    files = sorted(glob.glob(os.path.join(support.ROOT, 'tests', '*', '*.c')))
    return [open(f, 'rb').read() for f in files if os.path.getsize(f) < 20000] or [b'int main(void) { return 0; }\n']


def mutate(text, chance, corpus):
    data = bytearray(text)
    for _ in range(chance.choice((1, 1, 2, 3, 8))):
        at = chance.randrange(len(data) + 1)
        kind = chance.randrange(8)
        if kind == 0:
            data[at:at] = chance.choice(TOKENS)
        elif kind == 1:
            del data[at:at + chance.choice((1, 2, 5, 20, 100))]
        elif kind == 2:
            data[at:at] = data[at:at + chance.choice((1, 5, 30, 200))]
        elif kind == 3 and data:
            data[at % len(data)] = chance.randrange(256)
        elif kind == 4:
            other = chance.choice(corpus)
            begin = chance.randrange(len(other) + 1)
            data[at:at] = other[begin:begin + chance.choice((5, 40, 200))]
        elif kind == 5:
            del data[at:]
        elif kind == 6:
            words = list(re.finditer(rb'\w+|[^\w\s]', data))
            if len(words) > 1:
                a, b = chance.choice(words), chance.choice(words)
                data[a.start():a.end()] = b.group()
        else:
            data[at:at] = chance.choice(TOKENS) * chance.choice((1, 2, 50))
    return bytes(data)


def check(options, number):
    chance = random.Random(options.seed * 1000003 + number)
    corpus = options.corpus
    text = mutate(chance.choice(corpus), chance, corpus)
    flags = chance.choice(OPTION_SETS)
    with tempfile.TemporaryDirectory() as work:
        source = os.path.join(work, 'fuzz.c')
        open(source, 'wb').write(text)
        done = support.run([options.rvparse] + flags + [source], cwd=work, timeout=20)
        half_written = os.path.exists(source[:-2] + '.int.c') and done.returncode != 0
    if done.returncode == 124 or support.crashed(done) or half_written:
        if options.keep:
            os.makedirs(options.keep, exist_ok=True)
            open(os.path.join(options.keep, '%d.c' % number), 'wb').write(text)
        lines = done.stderr.decode(errors='replace').strip().splitlines()
        return '%s: exit %d%s: %s' % (' '.join(flags), done.returncode, ' leaves its output' if half_written else '',
                                      ' | '.join(lines[:3]))
    return None


def main():
    options = support.arguments('mutated inputs', ('--count', dict(type=int, default=20000)),
                                ('--seed', dict(type=int, default=1)), ('--keep', dict(default=None)))
    options.corpus = seeds()
    results = support.in_parallel(lambda number: (number, check(options, number)), range(options.count))
    failures = [(number, why) for number, why in results if why]
    for number, why in failures[:50]:
        print('input %d: %s' % (number, why))
    support.finish('fuzz', len(results) - len(failures), len(failures))


main()
