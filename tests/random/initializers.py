"""Random initializers: designators, ranges, left out and doubled braces, strings and run-time values, of static and
automatic objects and compound literals, give what an ordinary compiler gives them.

    initializers.py --count 40 [--seed 1] [--keep FOLDER]
"""
import os
import random
import sys
import tempfile

sys.path.insert(0, os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
import support

SCALARS = ['int', 'char', 'short', 'unsigned char', 'long long', 'double', 'float', '_Bool', 'const char *', 'enum e']
HEAD = '''enum e { e0, e1, e2 = 7 };
int printf(const char *, ...);
static volatile int zero;
static int made(int n) { return n + zero; }
static const char *word(const char *text) { return text == 0 ? "-" : text; }
'''


class Type:
    """A scalar, an array or a class of one program."""

    def __init__(self, kind, spelling, parts=(), bound=0):
        self.kind, self.spelling, self.parts, self.bound = kind, spelling, parts, bound

    def declare(self, name):
        return self.parts[0].declare('%s[%d]' % (name, self.bound)) if self.kind == 'array' else self.spelling + ' ' + name


class Program:
    def __init__(self, chance):
        self.chance, self.classes, self.run_time = chance, [], False

    def type(self, depth):
        kind = self.chance.random()
        if depth >= 3 or kind < .35:
            return Type('scalar', self.chance.choice(SCALARS))
        if kind < .6:
            if self.chance.random() < .35:
                return Type('array', '', (Type('scalar', 'char'),), self.chance.randint(2, 6))
            return Type('array', '', (self.type(depth + 1),), self.chance.randint(1, 4))
        return self.new_class(depth)

    def new_class(self, depth):
        number = len(self.classes)
        self.classes.append('')
        word = self.chance.choice(('struct', 'struct', 'struct', 'union'))
        members = [('m%d' % i, self.type(depth + 1)) for i in range(self.chance.randint(1, 4))]
        spelling = '%s c%d' % (word, number)
        fields = [part.declare(name) for name, part in members]
        if word == 'struct' and self.chance.random() < .25:
            fields.insert(0, 'unsigned : 4')
        if word == 'struct' and self.chance.random() < .25:
            members.append(('bits', Type('scalar', 'bits')))
            fields.append('unsigned bits : 5')
        self.classes[number] = '%s { %s; };' % (spelling, '; '.join(fields))
        return Type(word, spelling, members)

    # --- Values ---

    def scalar(self, type):
        number = self.chance.randint(0, 25)
        if type.spelling == 'const char *':
            return self.chance.choice(('0', '"abc"', '"x" "yz"', '"hello" + %d' % self.chance.randint(0, 4)))
        if self.run_time and self.chance.random() < .3:
            return 'made(%d)' % number
        if type.spelling in ('double', 'float'):
            return '%d.%d' % (number, self.chance.choice((0, 5, 25)))
        return self.chance.choice(('%d' % number, "'%c'" % (97 + number), '%d - 1' % number, 'e%d' % (number % 3)))

    def value(self, type, braced=None):
        if type.kind == 'scalar':
            text = self.scalar(type)
            return '{%s}' % text if self.chance.random() < .05 else text
        if type.kind == 'array' and type.parts[0].spelling == 'char' and self.chance.random() < .7:
            text = '"%s"' % ''.join(self.chance.choice('abcxyz') for _ in range(self.chance.randint(0, type.bound)))
            return '{%s}' % text if self.chance.random() < .3 else text
        if braced is None:
            braced = self.chance.random() < .75
        return '{%s}' % self.list_of(type) if braced else self.without_braces(type)

    def without_braces(self, type):
        """As many values as the aggregate takes, in its order."""
        if type.kind == 'scalar':
            return self.scalar(type)
        if type.kind == 'array':
            return ', '.join(self.value(type.parts[0]) for _ in range(type.bound))
        members = type.parts[:1] if type.kind == 'union' else type.parts
        return ', '.join(self.value(part) for _, part in members)

    def designated(self, type):
        """`.m1[2] = value` with steps as deep as chance leads."""
        path = ''
        while True:
            if type.kind == 'array':
                first = self.chance.randrange(type.bound)
                last = self.chance.randint(first, type.bound - 1)
                ranged = last > first and self.chance.random() < .25
                path += '[%d ... %d]' % (first, last) if ranged else '[%d]' % first
                type = type.parts[0]
            else:
                name, type = self.chance.choice(type.parts)
                path += '.' + name
            if type.kind == 'scalar' or self.chance.random() < .6:
                saved, self.run_time = self.run_time, self.run_time and '...' not in path  # a range takes constants
                text = '%s = %s' % (path, self.value(type, braced=True))
                self.run_time = saved
                return text

    def list_of(self, type):
        items = []
        for _ in range(self.chance.randint(0, 3)):
            items.append(self.designated(type))
        if self.chance.random() < .6:
            members = [type.parts[0]] * type.bound if type.kind == 'array' else [part for _, part in type.parts]
            members = members[:1] if type.kind == 'union' else members
            first = [self.value(part) for part in members[:self.chance.randint(1, len(members))]]
            items = first + items
        return ', '.join(items) + self.chance.choice(('', '', ',' if items else ''))

    # --- Uses ---

    def prints(self, type, path):
        if type.kind == 'scalar':
            if type.spelling == 'const char *':
                return ['printf("%%s ", word(%s));' % path]
            if type.spelling in ('double', 'float'):
                return ['printf("%%g ", (double)%s);' % path]
            return ['printf("%%lld ", (long long)%s);' % path]
        if type.kind == 'array':
            return sum((self.prints(type.parts[0], '%s[%d]' % (path, i)) for i in range(type.bound)), [])
        if type.kind == 'union':
            return []
        return sum((self.prints(part, path + '.' + name) for name, part in type.parts), [])

    def function(self, number):
        type = self.type(1)
        while type.kind in ('scalar', 'union'):
            type = self.type(1)
        self.run_time = False
        static = 'static %s = {%s};' % (type.declare('fixed'), self.list_of(type))
        self.run_time = True
        automatic = '%s = {%s};' % (type.declare('local'), self.list_of(type))
        lines = [static, automatic] + self.prints(type, 'fixed') + self.prints(type, 'local')
        if type.kind == 'struct':
            lines.append('local = (%s){%s};' % (type.spelling, self.list_of(type)))
            lines += self.prints(type, 'local')
        return 'static void f%d(void)\n{\n  %s\n  printf("\\n");\n}\n' % (number, '\n  '.join(lines))

    def program(self, count=8):
        functions = [self.function(number) for number in range(count)]
        calls = ' '.join('f%d();' % number for number in range(count))
        return HEAD + '\n'.join(reversed(self.classes)) + '\n' + ''.join(functions) + 'int main(void) { %s return 0; }\n' % calls


def built_output(command, source, program):
    done = support.run(command + [source, '-o', program])
    return None if done.returncode else support.run(support.RUN + [program], timeout=30).stdout.decode()


def check(options, number):
    """A complaint, None if all is well, or False if the ordinary compiler refuses the input."""
    text = Program(random.Random(options.seed * 5113 + number)).program()
    with tempfile.TemporaryDirectory() as work:
        source, generated, program = (os.path.join(work, name) for name in ('init.c', 'made.c', 'program'))
        open(source, 'w').write(text)
        wanted = built_output(support.DIRECT, source, program)
        if wanted is None:
            return False
        done = support.translate(options.rvparse, source, generated, ['--c99', '--gcc', '--no_warnings'])
        made = built_output(support.COMPILE, generated, program) if done.returncode == 0 else None
    if made == wanted:
        return None
    if options.keep:
        os.makedirs(options.keep, exist_ok=True)
        open(os.path.join(options.keep, 'init%d.c' % number), 'w').write(text)
    if made is None:
        return 'exit %d: %s' % (done.returncode, done.stderr.decode(errors='replace')[:200])
    at = next((i for i, pair in enumerate(zip(made.splitlines(), wanted.splitlines())) if pair[0] != pair[1]), 0)
    return 'f%d prints %s\n  instead of %s' % (at, made.splitlines()[at:at + 1], wanted.splitlines()[at:at + 1])


def main():
    options = support.arguments('random initializers', ('--count', dict(type=int, default=40)),
                                ('--seed', dict(type=int, default=1)), ('--keep', dict(default=None)))
    if not support.have_cross_tools():
        print('SKIPPED: no cross compiler')
        support.finish('initializers', 0, 0, options.count)
    results = support.in_parallel(lambda number: (number, check(options, number)), range(options.count))
    failures = [(number, why) for number, why in results if why]
    for number, why in failures[:20]:
        print('input %d: %s' % (number, why))
    refused = sum(why is False for _, why in results)
    support.finish('initializers', len(results) - len(failures) - refused, len(failures), refused)


if __name__ == '__main__':
    main()
