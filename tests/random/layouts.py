"""Random structs and unions: the generated C lays them out as the translator did, and, with containers of bit-fields
of the declared types, as an ordinary compiler does.

    layouts.py --count 40 [--seed 1] [--keep FOLDER]

Each program prints, for every type, what the translator folded (sizeof, offsetof) beside what the program finds, and
the bytes of an object with one member set.
"""
import os
import random
import sys
import tempfile

sys.path.insert(0, os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
import support

WIDTHS = {'char': 8, 'signed char': 8, 'unsigned char': 8, 'short': 16, 'unsigned short': 16, 'int': 32, 'unsigned': 32,
          'long long': 64, 'unsigned long long': 64, '_Bool': 1}
PLAIN = list(WIDTHS) + ['float', 'double', 'void *', 'long', 'A16']
WIDEST_CONTAINER = 32
SHARED = '''typedef short A16 __attribute__((aligned(16)));
int printf(const char *, ...);
void *memset(void *, int, unsigned);
static void show(const char *name, const void *object, unsigned size)
{
  const unsigned char *p = object;
  printf("%s ", name);
  while (size-- > 0) printf("%02x", *p++);
  printf("\\n");
}
'''


class Types:
    """Declarations of one program.  `declared` asks for what ordinary compilers lay out alike."""

    def __init__(self, chance, declared):
        self.chance, self.declared = chance, declared
        self.texts, self.uses = [], []

    def attribute(self, *choices):
        return ' __attribute__((%s))' % self.chance.choice(choices) if self.chance.random() < .1 else ''

    def bit_field(self, name):
        kind = self.chance.choice(list(WIDTHS))
        # The default containers are no wider than this; 64 bits of a packed field have a message of their own.
        width = self.chance.randint(1, min(WIDTHS[kind], 64 if self.declared else WIDEST_CONTAINER))
        if self.chance.random() < .12:
            return '%s : %d;' % (kind, self.chance.choice((0, 0, width))), []
        return '%s %s : %d;' % (kind, name, width), [(name, None)]

    def plain(self, name):
        kind = self.chance.choice(PLAIN)
        bound = self.chance.choice(('', '', '', '[%d]' % self.chance.randint(1, 4)))
        if kind == 'A16':
            bound = ''
        attribute = self.attribute('aligned(2)', 'aligned(8)', 'packed', 'aligned(16)') if not self.declared else ''
        return '%s %s%s%s;' % (kind, name, bound, attribute), [(name + bound.replace('[', '[0 * '), name)]

    def nested(self, name, depth):
        fields, members = self.fields(name + '_', depth + 1)
        tail = '' if self.chance.random() < .3 else name
        prefix = tail + '.' if tail else ''
        members = [(prefix + path, place and prefix + place) for path, place in members]
        return '%s { %s } %s;' % (self.chance.choice(('struct', 'union')), fields, tail), members

    def fields(self, prefix, depth=0):
        texts, members = [], []
        for i in range(self.chance.randint(1, 6)):
            name, kind = prefix + str(i), self.chance.random()
            text, more = (self.bit_field(name) if kind < .5 else self.plain(name) if kind < .82 or depth == 2 else
                          self.nested(name, depth))
            texts.append(text)
            members += more
        if not members:
            texts.append('int %slast;' % prefix)
            members.append((prefix + 'last', prefix + 'last'))
        return ' '.join(texts), members

    def add(self, number):
        fields, members = self.fields('f')
        tag = '%s t%d' % (self.chance.choice(('struct', 'struct', 'union')), number)
        attribute = '' if self.declared else self.attribute('packed', 'aligned(8)', 'packed, aligned(4)')
        pack = self.chance.choice((0,) * 12 + (1, 2, 4)) if not self.declared else 0
        text = '%s { %s }%s;' % (tag, fields, attribute)
        self.texts.append('#pragma pack(%d)\n%s\n#pragma pack()' % (pack, text) if pack else text)
        lines = ['static %s x[2];' % tag,
                 'printf("%s %%d %%d\\n", (int)sizeof x[0], (int)((char *)&x[1] - (char *)x));' % tag]
        for path, place in members:
            if place:
                lines.append('printf("%s %%d %%d\\n", (int)__builtin_offsetof(%s, %s), (int)((char *)&x->%s - (char *)x));'
                             % (place, tag, place, place))
            value = '(__typeof__(x->%s))-1' % path if place else '-1'
            lines.append('memset(x, 0, sizeof x); x->%s = %s; show("%s", x, sizeof *x);' % (path, value, path))
        self.uses.append('  {\n    %s\n  }' % '\n    '.join(lines))

    def program(self, count=12):
        for number in range(count):
            self.add(number)
        return SHARED + '\n'.join(self.texts) + '\nint main(void)\n{\n' + '\n'.join(self.uses) + '\n  return 0;\n}\n'


def output_of(command, source, work):
    program = os.path.join(work, 'program')
    done = support.run(command + [source, '-o', program])
    if done.returncode != 0:
        return None, done.stderr.decode(errors='replace')[:300]
    return support.run(support.RUN + [program], timeout=30).stdout.decode(), ''


def first_contradiction(printed):
    """The first line whose two numbers, what was folded and what is so, differ."""
    for line in printed.splitlines():
        words = line.split()
        if words[-1].isdigit() and words[-2].isdigit() and len(words[-1]) < 4 and words[-1] != words[-2]:
            return 'folded and found: ' + line
    return None


def check(options, number):
    declared = number % 2 == 0
    text = Types(random.Random(options.seed * 9176 + number), declared).program()
    with tempfile.TemporaryDirectory() as work:
        source, generated = os.path.join(work, 'layout.c'), os.path.join(work, 'made.c')
        open(source, 'w').write(text)
        extra = ['--small_container_bitfield_layout'] if declared else []
        done = support.translate(options.rvparse, source, generated, extra + ['--no_warnings'])
        made, why = (None, 'exit %d: %s' % (done.returncode, done.stderr.decode()[:200])) if done.returncode else \
            output_of(support.COMPILE, generated, work)
        if made is not None:
            why = first_contradiction(made)
            wanted = output_of(support.DIRECT, source, work)[0] if declared else made
            if why is None and made != wanted:
                pairs = zip(made.splitlines(), wanted.splitlines())
                why = next(('%s instead of %s' % pair for pair in pairs if pair[0] != pair[1]), 'lines are missing')
    if why and options.keep:
        os.makedirs(options.keep, exist_ok=True)
        open(os.path.join(options.keep, 'layout%d.c' % number), 'w').write(text)
    return why or None


def main():
    options = support.arguments('random layouts', ('--count', dict(type=int, default=40)),
                                ('--seed', dict(type=int, default=1)), ('--keep', dict(default=None)))
    if not support.have_cross_tools():
        print('SKIPPED: no cross compiler')
        support.finish('layouts', 0, 0, options.count)
    results = support.in_parallel(lambda number: (number, check(options, number)), range(options.count))
    failures = [(number, why) for number, why in results if why]
    for number, why in failures[:20]:
        print('input %d: %s' % (number, why))
    support.finish('layouts', len(results) - len(failures), len(failures))


if __name__ == '__main__':
    main()
