"""Random macros and calls, with arguments over lines, comments and directives among them: the preprocessed
tokens are those of the ordinary compilers wherever these take the input.

    macros.py --count 1500 [--seed 1] [--keep FOLDER]
"""
import os
import random
import re
import shutil
import sys
import tempfile

sys.path.insert(0, os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
import support

NAMES = ['A', 'B', 'C', 'F', 'G', 'H', 'K']
PLAIN = ['x', 'y', '1', '+', '-', '"s"', "'c'", '[', ']', 'foo', '->', '2.e', '.']
GAPS = [' ', '\n', '/* c */', ' \\\n', '\n#define ZZ\n', '\n#if 0\nxx\n#endif\n', '/*\n*/']
TOKEN = re.compile(rb'''[A-Za-z_$\x80-\xff][\w$\x80-\xff]*|\.?\d(?:[eEpP][+-]|[\w.])*|L?"(?:\\.|[^"\\\n])*"'''
                   rb'''|L?'(?:\\.|[^'\\\n])*'|->\*?|\+\+|--|<<=|>>=|<<|>>|<=|>=|==|!=|&&|\|\||\.\.\.'''
                   rb'''|[-+*/%&|^]=|##|::|\S''')


class Program:
    """One random source: a definition for each name, then lines of text."""

    def __init__(self, chance):
        self.chance = chance
        self.arity = {name: chance.choice([None, None, 0, 1, 1, 2, 3]) for name in NAMES}

    def call(self, params, depth):
        name = self.chance.choice(NAMES)
        arity = self.arity[name]
        if arity is None or self.chance.random() < .25 or depth > 2:
            return name
        arguments = ','.join(self.text(params, depth + 1) for _ in range(arity))
        return name + self.chance.choice(['', ' ']) + '(' + arguments + ')'

    def atom(self, params, depth):
        kind = self.chance.random()
        if params and kind < .35:
            return self.chance.choice(params)
        if kind < .55:
            return self.call(params, depth)
        if kind < .62:
            return '(' + self.text(params, depth + 1) + ')' if depth < 3 else 'z'
        if kind < .66:
            return self.chance.choice('()') if self.chance.random() < .08 else 'w'
        return self.chance.choice(PLAIN)

    def text(self, params, depth=0):
        return ' '.join(self.atom(params, depth) for _ in range(self.chance.choice((0, 1, 1, 2, 3))))

    def body_item(self, params):
        kind = self.chance.random()
        if params and kind < .15:
            return '#' + self.chance.choice(params)
        if params and kind < .23:  # most operands of ## that are arguments make no token
            return self.chance.choice(['x', 'F']) + ' ## ' + self.chance.choice(params + ['y', '2'] * 4)
        return self.atom(params, 0)

    def definition(self, name):
        if self.arity[name] is None:
            return '#define %s %s' % (name, self.text([]))
        params = ['p%d' % i for i in range(self.arity[name])]
        items = [self.body_item(params) for _ in range(self.chance.choice((1, 2, 3, 4)))]
        return '#define %s(%s) %s' % (name, ','.join(params), ' '.join(items))

    def gap(self, text, at):
        in_literal = text[:at].count('"') % 2 or text[:at].count("'") % 2
        return ' ' if in_literal or self.chance.random() > .2 else self.chance.choice(GAPS)

    def line(self):
        text = self.chance.choice([' ', '\n']).join(self.text([]) for _ in range(3))
        return ''.join(self.gap(text, at) if c == ' ' else c for at, c in enumerate(text))

    def source(self):
        return '\n'.join([self.definition(name) for name in NAMES] + [self.line() for _ in range(12)]) + '\n;;\n'


def tokens_of(compiler, source):
    done = support.run([compiler, '-E', '-P', '-std=gnu89', '-undef', source])
    return None if done.returncode else TOKEN.findall(done.stdout)


def check(options, number):
    """A complaint, None if all is well, or False if the compilers refuse the input."""
    text = Program(random.Random(options.seed * 7919 + number)).source()
    with tempfile.TemporaryDirectory() as work:
        source = os.path.join(work, 'macros.c')
        open(source, 'w').write(text)
        wanted = tokens_of('gcc', source)
        if wanted is None:
            return False
        done = support.run([options.rvparse, '-P', source])
        made = TOKEN.findall(done.stdout)
        # White space in strings made of empty expansions is a matter of taste: two ordinary ones differ there.
        if done.returncode == 0 and (made == wanted or (options.clang and made == tokens_of('clang', source))):
            return None
    if options.keep:
        os.makedirs(options.keep, exist_ok=True)
        open(os.path.join(options.keep, 'macros%d.c' % number), 'w').write(text)
    at = next((i for i, (a, b) in enumerate(zip(made, wanted)) if a != b), min(len(made), len(wanted)))
    return 'exit %d, token %d: %r instead of %r' % (done.returncode, at, made[at:at + 6], wanted[at:at + 6])


def main():
    options = support.arguments('random macros', ('--count', dict(type=int, default=1500)),
                                ('--seed', dict(type=int, default=1)), ('--keep', dict(default=None)))
    if not shutil.which('gcc'):
        print('SKIPPED: no gcc to compare with')
        support.finish('macros', 0, 0, options.count)
    options.clang = shutil.which('clang')
    results = support.in_parallel(lambda number: (number, check(options, number)), range(options.count))
    failures = [(number, why) for number, why in results if why]
    for number, why in failures[:20]:
        print('input %d: %s' % (number, why))
    refused = sum(why is False for _, why in results)
    support.finish('macros', len(results) - len(failures) - refused, len(failures), refused)


main()
