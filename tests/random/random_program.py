"""The random programs of dialect.py: a typed expression writer, and one method for each kind of function."""
import random

INTEGERS = ['_Bool', 'char', 'signed char', 'short', 'unsigned short', 'int', 'unsigned', 'long', 'unsigned long',
            'long long', 'unsigned long long', 'enum e']
FLOATS = ['float', 'double']

GNU_HEAD = r'''
#include <stdarg.h>
#include <stdio.h>
#define IS(e, t, n) (__builtin_types_compatible_p(__typeof__(e), t) ? n : 0)
#define KIND(e) (IS(e, int, 1) + IS(e, unsigned, 2) + IS(e, long, 3) + IS(e, unsigned long, 4) + IS(e, long long, 5) + \
  IS(e, unsigned long long, 6) + IS(e, float, 7) + IS(e, double, 8) + IS(e, _Bool, 9) + IS(e, char, 10) + IS(e, short, 11) + \
  IS(e, unsigned short, 12) + IS(e, signed char, 13))
static const char *where; static int line;
static void outz(double _Complex z) { printf("%s.%d %.9g %.9g\n", where, line++, __real z, __imag z); }
'''
STRICT_HEAD = r'''
int printf(const char *, ...);
#define KIND(e) 0
static const char *where; static int line;
'''
HEAD = r'''
enum e { E0, E1 = 5, E2 = -3, E3 = 70000 };
struct bits { int a : 3; unsigned b : 5; _Bool c : 1; unsigned short d : 9; signed char e : 4; long long f : 37; unsigned g : 32; };
struct small { char c; };
struct mid { short s; char t[3]; };
struct big { int i; double d; char name[6]; long long l; struct { int x, y[2]; } in; };
union mix { int i; float f; char c[4]; };
static void at(const char *name) { where = name; line = 0; }
static void out(long long v, int type) { printf("%s.%d %lld %d\n", where, line++, v, type); }
static void outf(double v, int type) { printf("%s.%d %.9g %d\n", where, line++, v, type); }
static void outs(const char *s) { printf("%s.%d %s\n", where, line++, s); }
static void outbig(struct big b) { printf("%s.%d %d %g %.6s %lld %d %d %d\n", where, line++, b.i, b.d, b.name, b.l, b.in.x, b.in.y[0], b.in.y[1]); }
#define OUT(e) out((long long)(e), KIND(e) * 100 + (int)sizeof(e))
#define OUTF(e) outf(e, KIND(e))
static double clamp(double d) { return d > 1000 ? 1000 : d < -1000 ? -1000 : d == d ? d : 7; }
static long long id(long long v) { return v; }
static void gone(int *v) { out(*v, 77); }
static int calls;
static int count(int v) { calls++; return v; }
static struct bits gb;
static union mix gu;
static struct big gbig = { 3, 1.5, "hello", 1LL << 40, { 1, { 2, 3 } } };
'''


class Program:
    def __init__(self, seed, gnu=True):
        """Without `gnu`, the program is plain C99 and includes nothing."""
        self.gnu = gnu
        self.random = random.Random(seed)
        self.functions, self.vars, self.serial = [], [], 0

    # --- Small choices

    def pick(self, items):
        return self.random.choice(items)

    def standard(self, forms):
        """The forms that the dialect has."""
        if self.gnu:
            return forms
        return [f for f in forms if not any(g in f for g in ('({', '__typeof__', '...', '?:', '__attribute__', '1[a]', 'sizeof(main)'))]

    def sample(self, forms, count):
        forms = self.standard(forms)
        return self.random.sample(forms, min(count, len(forms)))

    def chance(self, percent):
        return self.random.randrange(100) < percent

    def number(self, low, high):
        return self.random.randint(low, high)

    def name(self, stem):
        self.serial += 1
        return '%s%d' % (stem, self.serial)

    def literal(self):
        value = self.pick([0, 1, 2, 3, 7, 127, 128, 255, 256, 32767, 32768, 65535, 65536, 2147483647, 2147483648,
                           4294967295, 4294967296, 1099511627775, 9223372036854775807, self.number(0, 100000)])
        suffix = self.pick(['', '', '', 'u', 'l', 'ul', 'll', 'ull', 'LL', 'U'])
        text = self.pick(['%d', '0x%x', '0%o']) % value
        if text.startswith('00'):
            text = '0'
        return text + suffix

    # --- Expressions: integer(), real() and any_value() give text; depth counts down

    def integer_leaf(self):
        kind = self.number(0, 9)
        names = [n for n, t in self.vars if t in INTEGERS]
        if kind < 5 and names:
            return self.pick(names)
        if kind == 5:
            return self.pick(["'a'", "'\\377'", "'\\x80'", "L'\\x100'", 'E1', 'E2', 'E3'])
        if kind == 6:
            return self.field_value('gb')
        if kind == 7:
            return 'sizeof(%s)' % self.pick(INTEGERS + FLOATS + ['struct big *'])
        return self.literal()

    def field_value(self, base):
        # The compiler behind gives bit-fields types of their own width; nothing may show them.
        field = self.pick('abcdefg')
        return '((long long)%s.f)' % base if field == 'f' else '(+%s.%s)' % (base, field)

    def integer(self, depth):
        if depth <= 0:
            return self.integer_leaf()
        return self.pick([self.unary, self.binary, self.binary, self.binary, self.shift, self.division, self.comparison,
                          self.conditional, self.conversion, self.conversion, self.from_real, self.literal_object,
                          self.statement_expression, self.sequence, self.call])(depth - 1)

    def unary(self, depth):
        return '(%s%s)' % (self.pick(['-', '~', '!', '+', '!!']), self.integer(depth))

    def binary(self, depth):
        return '(%s %s %s)' % (self.integer(depth), self.pick(['+', '-', '*', '&', '|', '^']), self.integer(depth))

    def shift(self, depth):
        return '(%s %s (%s & %d))' % (self.integer(depth), self.pick(['<<', '>>']), self.integer(depth),
                                      self.pick([3, 7, 15]))

    def division(self, depth):
        return '(%s %s ((%s & 7) + %d))' % (self.integer(depth), self.pick('/%'), self.integer(depth),
                                            self.number(1, 9))

    def comparison(self, depth):
        operator = self.pick(['<', '>', '<=', '>=', '==', '!=', '&&', '||'])
        if self.chance(25):
            return '(%s %s %s)' % (self.real(depth), operator, self.any_value(depth))
        return '(%s %s %s)' % (self.integer(depth), operator, self.integer(depth))

    def conditional(self, depth):
        condition = self.any_value(depth)
        if self.gnu and self.chance(25):
            return '(%s ?: %s)' % (self.integer(depth), self.integer(depth))
        return '(%s ? %s : %s)' % (condition, self.integer(depth), self.integer(depth))

    def conversion(self, depth):
        if self.gnu and self.chance(10):
            return '((__typeof__(%s))%s)' % (self.integer(depth), self.integer(depth))
        return '((%s)%s)' % (self.pick(INTEGERS), self.integer(depth))

    def from_real(self, depth):
        return '((%s)clamp(%s))' % (self.pick([t for t in INTEGERS if 'unsigned' not in t and 'char' != t]),
                                    self.real(depth)) if self.chance(70) else '((_Bool)%s)' % self.real(depth)

    def literal_object(self, depth):
        kind, value = self.number(0, 4), self.integer(depth)
        if kind == 0:
            return '((%s[]){%s, %s}[%s & 1])' % (self.pick(INTEGERS), value, self.integer(depth), self.integer(depth))
        if kind == 1:
            return self.field_value('(struct bits){.%s = %s, %s}' % (self.pick('abcdef'), value, self.integer(depth)))
        if kind == 2:
            return '(*&(%s){%s})' % (self.pick(INTEGERS), value)
        if kind == 3:
            return '((struct big){.in.y = {[1] = %s}, .i = %s}.in.y[%d])' % (value, self.integer(depth),
                                                                            self.number(0, 1))
        return '((union mix){.c = {%s, %s}}.c[%d])' % (value, self.integer(depth), self.number(0, 2))

    def statement_expression(self, depth):
        if not self.gnu:
            return self.binary(depth)
        own = self.name('s')
        kind = self.pick(INTEGERS)
        first = self.integer(depth)
        self.vars.append((own, kind))
        middle = self.pick([
            lambda: '%s %s= %s;' % (own, self.pick(['+', '-', '*', '&', '|', '^']), self.integer(depth)),
            lambda: 'if (%s) %s = %s;' % (self.any_value(depth), own, self.integer(depth)),
            lambda: 'for (int i = 0; i < %d; i++) { if (i == %d) continue; %s += i; }' % (self.number(1, 5),
                                                                                         self.number(0, 5), own),
            lambda: 'switch (%s & 3) { case 0: %s++; case 1: %s ^= 9; break; default: %s = 4; }' % (
                self.integer(depth), own, own, own),
            lambda: ''])()
        last = self.pick([lambda: own, lambda: '%s + %s' % (own, self.integer(depth)), lambda: '++' + own,
                          lambda: own + '--'])()
        self.vars.pop()
        return '({ %s %s = %s; %s %s; })' % (kind, own, first, middle, last)

    def sequence(self, depth):
        return '(%s, %s)' % (self.pick([self.any_value(depth), '(void)' + self.any_value(depth)]), self.integer(depth))

    def call(self, depth):
        return 'id(%s)' % self.integer(depth)

    def real_leaf(self):
        names = [n for n, t in self.vars if t in FLOATS]
        if names and self.chance(60):
            return self.pick(names)
        return self.pick(['0.0', '(-0.0)', '1.5', '0.25f', '3e2f', '1e-3', '0x1.8p3', '1e10', 'gbig.d', '(double)' +
                          self.integer_leaf(), '(float)' + self.integer_leaf()])

    def real(self, depth):
        if depth <= 0:
            return self.real_leaf()
        kind = self.number(0, 7)
        if kind == 0:
            return '(-%s)' % self.real(depth - 1)
        if kind == 1:
            return '((%s)%s)' % (self.pick(FLOATS), self.any_value(depth - 1))
        if kind == 2:
            return '(%s ? %s : %s)' % (self.any_value(depth - 1), self.real(depth - 1), self.any_value(depth - 1))
        if kind == 3:
            return '(*(%s[]){%s})' % (self.pick(FLOATS), self.any_value(depth - 1))
        if kind == 4 and self.gnu:
            return '({ %s r = %s; r; })' % (self.pick(FLOATS), self.any_value(depth - 1))
        return '(%s %s %s)' % (self.real(depth - 1), self.pick('+-*'), self.any_value(depth - 1))

    def any_value(self, depth):
        return self.real(depth) if self.chance(20) else self.integer(depth)

    def show(self, depth):
        return 'OUTF(%s);' % self.real(depth) if self.chance(15) else 'OUT(%s);' % self.integer(depth)

    # --- Functions

    def locals(self, count):
        lines, self.vars = [], []
        for _ in range(count):
            kind = self.pick(INTEGERS + FLOATS)
            name = self.name('v')
            qualifier = self.pick(['', '', '', 'volatile ', 'static ', 'const '])
            if qualifier == 'static ':
                value = self.literal()
            else:
                value = self.any_value(1) if kind in FLOATS else self.integer(1)
            lines.append('%s%s %s = %s;' % (qualifier, kind, name, value))
            self.vars.append((name, kind))
        return lines

    def assignable(self):
        # A const variable keeps its value; its declaration tells.
        return [(n, t) for n, t in self.vars if n not in self.constants]

    def function(self, body, head='void', parameters='void'):
        name = self.name('f')
        self.functions.append('static %s %s(%s)\n{\n  at("%s");\n  %s\n}' % (head, name, parameters, name,
                                                                          '\n  '.join(body)))
        return name

    def note_constants(self, lines):
        self.constants = {line.split('=')[0].split()[-1] for line in lines if line.startswith('const ')}

    def expressions(self):
        lines = self.locals(6)
        self.note_constants(lines)
        for _ in range(self.number(4, 8)):
            lines.append(self.show(self.number(1, 4)))
        self.call_of(self.function(lines))

    def assignments(self):
        lines = self.locals(6)
        self.note_constants(lines)
        for _ in range(10):
            name, kind = self.pick(self.assignable() or [('calls', 'int')])
            if kind in FLOATS:
                lines.append('%s %s= %s;' % (name, self.pick(['', '+', '-', '*']), self.any_value(2)))
                lines.append('OUTF(%s);' % name)
                continue
            form = self.number(0, 5)
            if form == 0:
                lines.append('OUT(%s);' % self.pick(['++%s', '--%s', '%s++', '%s--']).replace('%s', name))
            elif form == 1:
                lines.append('%s %s= %s & 7;' % (name, self.pick(['<<', '>>']), self.integer(1)))
            elif form == 2:
                lines.append('%s %s= (%s & 15) + 1;' % (name, self.pick('/%'), self.integer(1)))
            elif form == 3:
                lines.append('OUT(%s %s= %s);' % (name, self.pick(['+', '-', '*', '&', '|', '^', '']), self.integer(2)))
            else:
                lines.append('%s %s= %s;' % (name, self.pick(['+', '-', '*', '&', '|', '^', '']), self.integer(2)))
            lines.append('OUT(%s);' % name)
        for _ in range(6):
            field = self.pick('abcdefg')
            lines.append(self.pick(['gb.%s = %s;', 'gb.%s += %s;', 'out(gb.%s = %s, 0);', 'gb.%s ^= %s;', 'gb.%s *= %s;',
                                    'gb.%s <<= %s & 3;', 'gb.%s++; (void)%s;', 'out(--gb.%s, 1); (void)%s;',
                                    'gb.%s--; (void)%s;']) % (field, self.integer(1)))
        lines += ['out(gb.%s, 0);' % field for field in 'abcdefg']
        self.call_of(self.function(lines))

    def initializer_of_big(self, depth):
        parts = []
        for _ in range(self.number(1, 5)):
            parts.append(self.pick([
                lambda: '.i = ' + self.integer(depth), lambda: '.d = ' + self.any_value(depth),
                lambda: '.name = "%s"' % self.pick(['', 'a', 'abcde', 'x\\0y']), lambda: '.l = ' + self.integer(depth),
                lambda: '.in.y[%d] = %s' % (self.number(0, 1), self.integer(depth)),
                lambda: '.in = {%s, {%s}}' % (self.integer(depth), self.integer(depth)),
                lambda: '.in.y = {[%d] = %s}' % (self.number(0, 1), self.integer(depth)),
                lambda: ".name[%d] = 'q'" % self.number(0, 4)])())
        return '{%s}' % ', '.join(parts)

    def designators(self):
        lines = self.locals(4)
        self.note_constants(lines)
        for _ in range(4):
            name = self.name('d')
            lines.append('struct big %s = %s;' % (name, self.initializer_of_big(1)))
            lines.append('outbig(%s);' % name)
        array, size = self.name('d'), self.number(3, 9)
        kind = self.pick(INTEGERS)
        parts = []
        for _ in range(self.number(1, 5)):
            low = self.number(0, size - 1)
            high = self.number(low, size - 1)
            parts.append(self.pick(self.standard(['[%d] = %s' % (low, self.integer(1)),
                                                  '[%d ... %d] = %d' % (low, high, self.number(0, 99))])))
        lines.append('%s %s[%d] = {%s};' % (kind, array, size, ', '.join(parts)))
        lines.append('for (int i = 0; i < %d; i++) OUT(%s[i]);' % (size, array))
        saved, self.vars = self.vars, []
        lines.append('static struct big %s[3] = {[1].i = 5, [2] = {.l = 7, .in = {1, {2, 3}}}, %s.d = %d};'
                     % (array + 's', '[0 ... 1]' if self.gnu else '[1]', self.number(0, 9)))
        lines.append('for (int i = 0; i < 3; i++) outbig(%ss[i]);' % array)
        self.vars = saved
        lines.append('outbig((struct big)%s);' % self.initializer_of_big(1))
        self.call_of(self.function(lines))

    def variable_arrays(self):
        self.vars = [('n', 'int'), ('m', 'int')]
        self.constants = set()
        kind = self.pick([t for t in INTEGERS if t != '_Bool' and t != 'enum e'])
        lines = ['%s a[n][m];' % kind, 'for (int i = 0; i < n; i++) for (int j = 0; j < m; j++) a[i][j] = %s + i * j;' %
                 self.integer(1),
                 '%s (*p)[m] = a + %d;' % (kind, self.number(0, 1)), 'int k = m;',
                 'OUT(sizeof a / sizeof a[0][0]); OUT(sizeof *p); OUT((*p)[1]); OUT(p[0][m - 1]);']
        forms = ['m += 3; OUT(sizeof *p); m -= 3;', 'typedef %s row[m]; m++; row *q = p; OUT((*q)[0]); OUT(sizeof(row)); m--;' % kind,
                 '__typeof__(a[0]) copy; for (int i = 0; i < k; i++) copy[i] = a[1][i]; OUT(copy[k - 1]); OUT(sizeof copy);',
                 'OUT(((%s (*)[k])a)[1][0]);' % kind, 'OUT(sizeof(%s[k++][2])); OUT(k);' % kind,
                 '%s (*r)[k] = (%s (*)[k++])a; OUT(r[1][0]); OUT(k); k--;' % (kind, kind),
                 'for (int i = 1; i < 3; i++) { %s b[i + 1]; b[i] = i; OUT(b[i] + sizeof b); }' % kind,
                 'int w = 0; again: { %s b[w + 1]; b[w] = w; OUT(b[w]); if (++w < 3) goto again; }' % kind,
                 '%s *flat = &a[0][0]; OUT(flat[m + 1] == a[1][1]); OUT((%s *)(p + 1) - (%s *)p);' % (kind, kind, kind)]
        for form in self.sample(forms, self.number(3, 6)):
            lines.append('{ k = m; %s }' % form)
        inner = self.name('g')
        self.functions.append('static long long %s(int n, int m, %s a[n][m], %s (*b)[m %s])\n{\n  long long s = sizeof *a + sizeof *b;\n'
                              '  for (int i = 0; i < n; i++) for (int j = 0; j < m; j++) s = s * 3 + a[i][j] + b[0][0];\n'
                              '  return s;\n}' % (inner, kind, kind, self.pick(['', '+ 0', '* 1'])))
        lines.append('OUT(%s(n, m, a, p));' % inner)
        name = self.function(lines, parameters='int n, int m')
        self.call_of(name, '%d, %d' % (self.number(2, 5), self.number(2, 6)))

    def complex_values(self):
        self.vars = []
        self.constants = set()
        lines = ['double _Complex z = %d + %d.0i, w = %d.5i; float _Complex s = %d - 2.0fi; double d = %d; int i = %d; _Bool b;' %
                 tuple(self.number(1, 9) for _ in range(6))]
        values = ['z', 'w', 's', 'd', 'i', '(z + s)', '(w * i)', '~z', '-s', '(1.0 + 2.0i)', '2.0fi', '(z - d)', '__real z']
        forms = ['z %s= %s;', 's %s= %s;', 'd %s= %s;', 'i %s= %s;', 'w %s= %s;']
        for _ in range(8):
            lines.append(self.pick(forms) % (self.pick(['', '+', '-', '*', '/']), self.pick(values)))
            lines.append('d = clamp(d); i &= 255; if (!(__real z < 1e6 && __real z > -1e6 && __imag z < 1e6 && __imag z > -1e6)) z = 1; '
                         'if (!(__real w < 1e6 && __real w > -1e6 && __imag w < 1e6 && __imag w > -1e6)) w = 2.0i; '
                         'if (!(__real s < 1e6f && __real s > -1e6f && __imag s < 1e6f && __imag s > -1e6f)) s = 3; '
                         'if (!d) d = 2; if (!i) i = 3; if (!s) s = 1; if (!z) z = 4.0i; if (!w) w = 1.0i;')
            lines.append(self.pick(['outz(z);', 'outz(s);', 'outz(w);', 'OUTF(d);', 'OUT(i);', 'outz(z + s * 2);',
                                    'b = z; OUT(b);', 'OUT(z == w);', 'OUT(!s);', 'outz(i ? z : d);', 'OUT(w && i);',
                                    '__real z += 1; outz(z);', '__imag s = i; outz(s);', 'outz((float _Complex)z);',
                                    'OUT(sizeof(s * d));', 'outz(({ double _Complex q = z; q; }));', 'z++; outz(z--);',
                                    'outz(*(double _Complex[]){s, d});', 'b += w; OUT(b);', 'OUTF((double)(z * s));']))
        self.call_of(self.function(lines))

    def jumps(self):
        lines = self.locals(3)
        self.note_constants(lines)
        kind = self.pick([t for t in INTEGERS if t not in ('_Bool', 'enum e')])
        lines.append('int steps = 0; for (%s v = 0; v < %d; v++) {' % (kind, self.number(4, 12)))
        labels = [self.name('l') for _ in range(3)]
        lines.append('  switch (%s) {' % self.pick(['v', 'v + 0LL', '(char)(v * 37)', 'v ^ 3', '-v', 'v & 5']))
        used, cases = set(), self.number(3, 7)
        for _ in range(cases):
            low = self.number(-3, 130)
            high = low + self.pick([0, 0, 0, 2, 5] if self.gnu else [0])
            if any(v in used for v in range(low, high + 1)):
                continue
            used.update(range(low, high + 1))
            lines.append('  case %s:' % ('%d' % low if low == high else '%d ... %d' % (low, high)))
            lines.append('    steps += %d; %s' % (self.number(1, 50), self.pick(self.standard(
                ['break;', 'continue;', '', 'if (steps & 1) break;', 'goto %s;' % labels[0], 'if (v > 2) goto %s;' % labels[1],
                 'while (steps %% 3) { steps++; case %d: steps += 3; }' % self.fresh(used),
                 'do { steps++; if (steps > 90) break; case %d: ; } while (steps & 2);' % self.fresh(used),
                 'if (v) { case %d: steps ^= 5; } else steps--;' % self.fresh(used),
                 'for (int i = 0; ({ int t = i < 2; t; }); i++) { if (i) break; steps += ({ if (v == 3) continue; 2; }); }']))))
        lines.append('  %s steps *= 3; %s' % (self.pick(['default:', '']), self.pick(['break;', ''])))
        lines.append('  }')
        lines.append('  if (steps > 100000) steps %= 1000;')
        lines.append('  goto %s;' % labels[2])
        lines.append('%s: steps++; %s: steps += 2; %s: OUT(steps);' % tuple(labels))
        lines.append('}')
        self.call_of(self.function(lines))

    def fresh(self, used):
        value = next(v for v in iter(lambda: self.number(140, 9999), None) if v not in used)
        used.add(value)
        return value

    def structures(self):
        lines = self.locals(3)
        self.note_constants(lines)
        make, change = self.name('g'), self.name('g')
        self.functions.append('static struct big %s(int i, struct mid m, struct small s) { struct big b = {.i = i, .l = m.s, '
                              '.in.y = {m.t[1], s.c}}; return b; }' % make)
        self.functions.append('static struct mid %s(struct mid m, int by) { m.s += by; m.t[2]++; return m; }' % change)
        lines += ['struct mid m = {%s, "ab"}, m2 = %s(m, 3); struct small s = {%s};' % (self.integer(1), change,
                                                                                   self.integer(1)),
                  'struct big b = %s(%s, m2, s), c, *p = &c;' % (make, self.integer(1))]
        forms = ['outbig(%s(4, %s(m, 1), (struct small){9}));' % (make, change), 'OUT(%s(5, m, s).in.y[%d]);' % (make,
                                                                                                         self.number(0, 1)),
                 'OUT(%s(m, 2).t[2]);' % change, 'OUT(*%s(6, m, s).in.y);' % make, 'outs(%s(6, m, s).name);' % make,
                 'outs((b = gbig).name + 1); OUT(*((c = b).in.y + 1));', 'OUT(sizeof %s(1, m, s).name);' % make, 'c = *p = b; outbig(c);', 'outbig(%s ? b : gbig);' % self.any_value(2),
                 'outbig((%s, b));' % self.integer(1), 'outbig(({ struct big q = b; q.i++; q; }));',
                 'OUT((%s ? b : gbig).in.y[1]);' % self.integer(1), 'OUT((b = gbig).i);', 'm = (m2 = %s(m2, 1)); OUT(m.s);' % change,
                 'struct { struct mid a[2]; } n = {{%s(m, 1), %s(m, 2)}}; OUT(n.a[1].s);' % (change, change),
                 'struct mid v[2] = {m, [1] = m2}; v[0] = v[1]; OUT(v[0].s);', 'OUT(({ %s(1, m, s); }).in.y[0]);' % make,
                 'union mix u = {.i = %s}, w = u; OUT(w.i); OUT((w.c[1] = 3, w.c[1]));' % self.integer(1),
                 '*p = (struct big){.l = m.s}; outbig(*p);', 'gbig = *({ p = &b; p; }); outbig(gbig);']
        for form in self.sample(forms, self.number(4, 8)):
            lines.append('{ %s }' % form)
        self.call_of(self.function(lines))

    def variadic(self):
        self.vars, self.constants = [], set()
        name, form, arguments, reads = self.name('g'), '', [], []
        for _ in range(self.number(1, 7)):
            kind = self.pick(['int', 'long long', 'double', 'struct mid', 'struct big', 'char *', 'unsigned', 'struct small'])
            if kind == 'double':
                arguments.append(self.pick(['1.5', '2.5f', '(float)3', 'gbig.d']))
                reads.append('outf(va_arg(*ap, double), 0);')
            elif kind == 'struct mid':
                arguments.append('(struct mid){%s, "xy"}' % self.integer(1))
                reads.append('{ struct mid m = va_arg(*ap, struct mid); out(m.s, m.t[1]); }')
            elif kind == 'struct big':
                arguments.append('gbig')
                reads.append('outbig(va_arg(*ap, struct big));')
            elif kind == 'struct small':
                arguments.append('(struct small){%s}' % self.integer(1))
                reads.append('out(va_arg(*ap, struct small).c, 1);')
            elif kind == 'char *':
                arguments.append('"text" "%d"' % self.number(0, 99))
                reads.append('outs(va_arg(*ap, char *));')
            else:
                promoted = self.pick([kind, 'short', 'char', '_Bool']) if kind == 'int' else kind
                arguments.append('(%s)%s' % (promoted, self.integer(1)))
                reads.append('out(va_arg(*ap, %s), 2);' % kind)
        self.functions.append('static void %sv(va_list *ap)\n{\n  %s\n}' % (name, '\n  '.join(reads)))
        self.functions.append('static void %s(int n, ...)\n{\n  va_list ap, again; va_start(ap, n); va_copy(again, ap);\n'
                              '  %sv(&ap); va_end(ap); %sv(&again); va_end(again);\n}' % (name, name, name))
        self.call_of(self.function(['%s(1, %s);' % (name, ', '.join(arguments))]))

    def old_style(self):
        self.vars, self.constants = [], set()
        kinds = [self.pick(['char', 'signed char', 'short', 'unsigned short', 'float', 'double', 'int', 'long long', 'struct mid',
                            'enum e', 'char *']) for _ in range(self.number(1, 6))]
        name, args, shows, declared = self.name('g'), [], [], []
        for number, kind in enumerate(kinds):
            parameter = 'p%d' % number
            declared.append('%s%s %s;' % ('' if 'struct' in kind else self.pick(['', 'register ']), kind, parameter))
            if kind == 'struct mid':
                args.append('(struct mid){%s, "pq"}' % self.integer(1))
                shows.append('out(%s.s, %s.t[0]);' % (parameter, parameter))
            elif kind == 'char *':
                args.append('"old"')
                shows.append('outs(%s);' % parameter)
            elif kind in FLOATS:
                args.append(self.pick(['1.1', '2.25f', '1e-40']))
                shows.append('outf(%s, sizeof %s); %s++; outf(%s * 2, 0);' % ((parameter,) * 4))
            else:
                args.append('(%s)%s' % ('long long' if kind == 'long long' else 'int', self.integer(1)))
                shows.append('OUT(%s); %s -= 1; OUT(%s << 1);' % ((parameter,) * 3))
        self.functions.append('static int %s();\nstatic int %su() { return %s(%s); }' % (name, name, name, ', '.join(args)))
        self.functions.append('static int %s(%s)\n  %s\n{\n  %s\n  return calls;\n}' % (
            name, ', '.join('p%d' % n for n in range(len(kinds))), ' '.join(declared), '\n  '.join(shows)))
        self.call_of(self.function(['%su(); int (*fp)() = %s; fp(%s);' % (name, name, ', '.join(args))]))

    def effects(self):
        """Calls counted: each operand is evaluated as often as C says."""
        lines = self.locals(2)
        self.note_constants(lines)
        forms = ['OUT(count(%s) && count(0));', 'OUT(count(0) || count(%s));', 'OUT(count(%s) ? count(2) : count(3));',
                 'OUT(count(%s) ?: count(4));', 'int a[3] = {count(1)}; a[count(2)] += count(3); OUT(a[2] + (%s));',
                 'struct mid v[3] = {{1}}; v[count(1)].s += 5; v[count(1)].t[count(2)]++; OUT(v[1].s + (%s));',
                 '_Bool f[2] = {0}; f[count(1)]++; f[count(1)] ^= 1; f[count(0)] += %s; OUT(f[0] + f[1] * 2);',
                 'struct bits q[2] = {{0}}; q[count(1)].b += 3; q[count(1)].f -= %s; out(q[1].f + q[1].b, 0);',
                 'int i = 0; while (({ i += count(1); i < 4; })) if (({ count(i); })) continue; OUT(i + (%s));',
                 'for (int i = 0; i < ({ count(3); }); ({ i++; count(0); })) OUT(i ^ (%s)); ',
                 'int x = 5; OUT((count(0) && ({ x = 9; 1; })) + (%s)); OUT(x);',
                 'int x = 5; OUT((count(1) ? ({ x++; x; }) : ({ x--; x; })) + (%s)); OUT(x);',
                 'int x = 5; x = (count(1), ({ int t = x + 1; t; })), count(2); OUT(x + (%s));',
                 'int *p = (int[]){count(1), count(2), 3}; p += count(1); *p++ += %s; OUT(p[-1]); OUT(*p);',
                 'char s[4] = "abc", *p = s; *p++ = *s + 1; OUT(*p + s[0] + (%s));',
                 'do { if (count(0)) break; OUT(%s); } while (({ count(0); }));',
                 'switch (({ count(%s) & 1; })) { case 0: OUT(1); default: OUT(2); }',
                 'int x = 1; if (({ count(x); }) && (x = 0, ({ count(1); })) || ({ x = 7; 0; })) OUT(x); OUT(%s);',
                 'int a[2] = {1, 2}; int *p = a; (*(count(1), p) += 3) ; OUT(a[0]); OUT(%s);',
                 'float g = 1.5f; g += count(1) ? 2.5 : %s; OUTF(g); g++; OUTF(g--); OUTF(g);']
        for form in self.sample(forms, self.number(4, 9)):
            lines.append('{ %s OUT(calls); }' % (form % self.integer(1)))
        self.call_of(self.function(lines))

    def constant(self, depth):
        """A constant expression: what the front end folds and the direct build folds, too."""
        if depth <= 0:
            return self.pick([self.literal, self.literal, lambda: self.pick(['E1', 'E2', 'E3', "'a'", "'\\xff'"]),
                              lambda: 'sizeof(%s)' % self.pick(INTEGERS + ['struct big', 'int[7]', '"text"'])])()
        one, two = self.constant(depth - 1), self.constant(depth - 1)
        return self.pick([
            '(%s %s %s)' % (one, self.pick(['+', '-', '*', '&', '|', '^', '<', '>=', '==', '!=', '&&', '||']), two),
            '(%s %s %d)' % (one, self.pick(['<<', '>>']), self.number(0, 15)),
            '(%s %s %d)' % (one, self.pick('/%'), self.number(1, 99)), '(%s%s)' % (self.pick('-~!+'), one),
            '((%s)%s)' % (self.pick(INTEGERS), one), '((%s)%s)' % (self.pick(INTEGERS), one),
            '(%s ? %s : %s)' % (self.constant(0), one, two)] + ([] if not self.gnu else [
                # C99 has no arithmetic of floating constants in integer constant expressions.
                '((int)(%s))' % self.real_constant(2),
                '(%s < %s)' % (self.real_constant(depth - 1), self.real_constant(depth - 1))]))

    def real_constant(self, depth):
        if depth <= 0:
            return self.pick(['1.5', '0.1f', '3e2', '0.25f', '7', '(-2)', '0x1p-3', '12345.678', '1e-3f', "'a'"])
        one, two = self.real_constant(depth - 1), self.real_constant(depth - 1)
        return self.pick(['(%s %s %s)' % (one, self.pick('+-*'), two), '(%s / %s)' % (one, self.pick(['3', '7.0', '0.5f'])),
                          '(-%s)' % one, '((%s)%s)' % (self.pick(FLOATS), one), '(%s ? %s : %s)' % (one, two, one)])

    def constants(self):
        lines, self.vars = [], []
        kinds = [t for t in INTEGERS if t != 'enum e']
        for _ in range(5):
            name, kind = self.name('c'), self.pick(kinds)
            lines.append('static %s %s[] = {%s};' % (kind, name, ', '.join(self.constant(self.number(1, 4)) for _ in range(4))))
            lines.append('for (int i = 0; i < 4; i++) OUT(%s[i]);' % name)
        name = self.name('c')
        lines.append('static double %s[] = {%s}; static float %sf = %s;' % (
            name, ', '.join(self.real_constant(3) for _ in range(4)), name, self.real_constant(3)))
        lines.append('for (int i = 0; i < 4; i++) OUTF(%s[i]); OUTF(%sf);' % (name, name))
        if self.gnu:
            lines.append('static double _Complex %sz = %s + %s * 1.0i; outz(%sz);' % (
                name, self.real_constant(2), self.real_constant(1), name))
        lines.append('enum { %sa = (int)(%s), %sb, %sc = %sa ^ 5 }; OUT(%sa); OUT(%sb); OUT(%sc);' % (
            name, self.constant(3), *[name] * 6))
        lines.append('char %sd[(%s & 31) + 1]; OUT(sizeof %sd);' % (name, self.constant(3), name))
        lines.append('struct { int b : (%s & 15) + 1; } %se = {-1}; OUT(+%se.b);' % (self.constant(2), name, name))
        lines.append('static char *%sp = gu.c + (%s & 3), *%sq = &gbig.name[%d] - 1; OUT(%sp - gu.c); OUT(%sq - gbig.name);' % (
            name, self.constant(2), name, self.number(1, 5), name, name))
        for _ in range(4):
            lines.append('OUT(%s);' % self.constant(4))
        self.call_of(self.function(lines))

    def scopes(self):
        """Names that hide each other, and local entities of all kinds, some of which nothing uses."""
        name, lines = self.pick(['x', 'gb', 'calls', 'a', 'tag']), []
        self.vars, self.constants = [], set()
        forms = [
            'static int %(n)s = %(k)d; OUT(++%(n)s);', 'static int unused%(s)d; static char %(n)s[] = "ab%(k)d"; outs(%(n)s);',
            'enum { %(n)s = %(k)d, %(n)s_%(s)d }; OUT(%(n)s_%(s)d);', 'typedef short %(n)s; %(n)s v = %(k)d; OUT(v);',
            'struct %(n)s { int %(n)s; } v = {%(k)d}, unused; OUT(v.%(n)s);', 'union %(n)s { char c[4]; int i; } %(n)s = {.i = %(k)d}; OUT(%(n)s.i);',
            'int %(n)s = %(k)d; { int %(n)s = %(k)d + 1; OUT(%(n)s); } OUT(%(n)s);', 'int %(n)s; %(n)s: %(n)s = %(k)d; OUT(%(n)s);',
            'extern long long id(long long); OUT(id(%(k)d));', 'int %(n)s_%(s)d(int); OUT(sizeof %(n)s_%(s)d(1));',
            'struct u%(s)d; struct u%(s)d { struct u%(s)d *next; int v; } one = {0, %(k)d}, two = {&one}; OUT(two.next->v);',
            'extern int calls; OUT(calls - calls + %(k)d);', 'for (int %(n)s = 0; %(n)s < 2; %(n)s++) { static int seen; seen += %(n)s + %(k)d; OUT(seen); }',
            'static const struct { int %(n)s[2]; const char *p; } v[] = {{{1, %(k)d}, "p"}, {{3}}}; OUT(v[0].%(n)s[1] + (v[1].p == 0));',
            'static int v, *%(n)s = &v; *%(n)s += %(k)d; OUT(v);',
            'enum t%(s)d { P%(s)d = %(k)d }; { enum t%(s)d { Q%(s)d = 4 }; OUT(Q%(s)d + P%(s)d); }',
            '{ if (%(k)d & 2) goto e%(s)d; int w __attribute__((cleanup(gone))) = %(k)d; OUT(w); int u __attribute__((cleanup(gone))) '
            '= 5; if (w & 1) goto e%(s)d; OUT(u); } e%(s)d: OUT(6);',
            'if (%(k)d & 1) { static int %(n)s; OUT(%(n)s--); } else { static double %(n)s = 1.5; OUTF(%(n)s); }']
        for form in self.sample(forms, self.number(5, 10)):
            text = form % {'n': name, 'k': self.number(0, 99), 's': self.serial}
            self.serial += 1
            lines.append(self.pick(self.standard(['{ %s }', '{ { %s } }', 'do { %s } while (0);', '({ %s });'])) % text)
        done = self.function(lines)
        self.call_of(done)
        self.call_of(done)

    def pointers(self):
        lines = self.locals(3)
        self.note_constants(lines)
        kind = self.pick([t for t in INTEGERS if t != 'enum e' and t != '_Bool'])
        lines += ['%s a[3][4], *p = a[1], **pp = &p, (*row)[4] = a; const %s *cp = p; void *vp = a;' % (kind, kind),
                  'for (int i = 0; i < 12; i++) a[0][i] = i * 3 + %d;' % self.number(0, 9),
                  'long long (*fp)(long long) = id, (*table[2])(long long) = {id, &id}; char *s = (char[]){"pointer"};']
        forms = ['OUT(p[-1] + *(p + 2)); OUT(p - a[0]);', 'OUT((*pp)++[1]); OUT(*p);', 'OUT(row[1][2]); row++; OUT((*row)[0]); row--;',
                 'OUT(*--p); OUT(*++p); OUT(++*p); OUT(p[0]++); OUT(*p);', 'OUT(((%s *)vp)[5]);' % kind, 'OUT(2[a][1]); OUT(*(*(a + 1) + 1));',
                 'OUT(fp(3) + (*fp)(4) + (**table)(5) + table[1](6) + (&id == fp));', 'OUT(&a[2][0] - p); OUT((char *)&a[1] - (char *)a);',
                 'OUT(p > a[0] && p <= a[2] && p != 0 && !!p);', 'cp = %s ? p : 0; OUT(cp == p);' % self.integer(1),
                 'vp = 1 ? p : vp; OUT(vp == (void *)p);', 'OUT(*(%s ? &a[0][1] : &a[0][2]));' % self.integer(1), 'OUT(s[2]); OUT(*s++ + *s); s[1] = 0; outs(s);',
                 'p += 2; p -= 1; OUT(*p);', 'OUT(*(p = a[2]));', 'OUT((%s, p)[1]);' % self.integer(1), 'long n = (long)p; OUT(*(%s *)n);' % kind,
                 '%s *q[2] = {p, a[2]}; OUT(*q[1] + **q);' % kind,
                 'struct { %s *p; int (*f)(void); long long (*g)(long long); } o = {p, 0, fp}; OUT(o.f ? 1 : o.g(*o.p));' % kind,
                 'OUT(({ %s *t = p; t++; })[-1]);' % kind, 'OUT((&a[1])[1][0]);']
        for form in self.sample(forms, self.number(6, 11)):
            lines.append('{ p = a[1]; %s }' % form)
        self.call_of(self.function(lines))

    def layouts(self):
        """Structures of all shapes, whose sizes nothing shows: values in, values out."""
        self.vars, self.constants = [], set()
        tag, members, inits, shows = self.name('S'), [], [], []
        for number in range(self.number(3, 9)):
            field = 'm%d' % number
            value = self.number(0, 1)
            kind = self.pick(range(8) if self.gnu else [0, 2, 3, 5, 6])
            if kind == 0:
                width = self.number(1, 13)
                members.append('%s %s : %d;' % (self.pick(['int', 'unsigned', 'unsigned short', 'long long', 'signed char : 0; int']),
                                                field, width))
                shows.append('out(p->%s, 0);' % field)
            elif kind == 1:
                members.append('struct { short %s; union { int %su; char %sc[4]; }; };' % ((field,) * 3))
                field = field + 'u'
                shows.append('OUT(p->%s);' % field)
            elif kind == 2:
                members.append('%s %s[%d];' % (self.pick(['char', 'int', 'double']), field, self.number(1, 5)))
                shows.append('outf(p->%s[0], 0);' % field)
                inits.append('.%s = {%d}' % (field, value))
                continue
            elif kind == 3:
                members.append('int : %d; _Bool %s;' % (self.number(0, 9), field))
                shows.append('OUT(p->%s);' % field)
            elif kind == 4:
                members.append('%s %s __attribute__((%s));' % (self.pick(['int', 'char', 'long long']), field,
                                                              self.pick(['packed', 'aligned(8)', 'aligned(2)'])))
                shows.append('OUT(p->%s);' % field)
            elif kind == 5:
                members.append('struct { struct mid s; int w : 5; } %s;' % field)
                shows.append('out(p->%s.s.s + p->%s.w, 0);' % (field, field))
                inits.append('.%s = {{%d, "x"}, %d}' % (field, self.number(0, 99), value))
                continue
            else:
                members.append('%s %s;' % (self.pick(INTEGERS + FLOATS), field))
                shows.append('outf(p->%s, 0);' % field)
            inits.append('.%s = %d' % (field, value))
        attribute = self.pick(self.standard(['', '', ' __attribute__((packed))', ' __attribute__((aligned(16)))']))
        union = self.pick(['', '', '', 'union { char first; '])
        self.functions.append('struct %s { %s%s%s }%s;' % (tag, union, '' if not union else 'int second; } mixed; ', ' '.join(members),
                                                           attribute))
        self.functions.append('static struct %s %sg[2] = {[1] = {%s}};' % (tag, tag, ', '.join(inits)))
        show = self.function(shows, parameters='struct %s *p' % tag)
        self.functions.append('static struct %s %sc(struct %s v) { return v; }' % (tag, tag, tag))
        fill = self.random.sample(inits, self.number(1, len(inits)))
        lines = ['%s(&%sg[1]);' % (show, tag), 'struct %s a = {%s}, b = a, c[2]; %s(&b); c[1] = %sc(a); %s(&c[1]);' % (
            tag, ', '.join(fill), show, tag, show), '%s(&(struct %s){%s});' % (show, tag, ', '.join(reversed(fill))),
            'static struct { char c; struct %s s; } n = {1, {%s}}; %s(&n.s);' % (tag, ', '.join(fill), show)]
        self.call_of(self.function(lines))

    # --- The program

    def call_of(self, name, arguments=''):
        self.calls.append('  %s(%s);' % (name, arguments))

    def text(self):
        self.calls = []
        kinds = [self.expressions, self.expressions, self.assignments, self.designators, self.variable_arrays,
                 self.complex_values, self.jumps, self.structures, self.variadic, self.old_style, self.effects,
                 self.constants, self.scopes, self.pointers, self.layouts]
        if not self.gnu:
            kinds = [k for k in kinds if k not in (self.complex_values, self.variadic)]
        for kind in kinds + self.random.sample(kinds, 4):
            kind()
        return (GNU_HEAD if self.gnu else STRICT_HEAD) + HEAD + '\n'.join(self.functions) + '\nint main(void)\n{\n%s\n  return 0;\n}\n' % '\n'.join(self.calls)
