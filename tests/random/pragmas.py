"""Random pragmas, well formed and not, between any two tokens of a program: no run ends by a signal or a hang,
and where none is an error, the generated C is that of the program without them, but for what they attach.

    pragmas.py --count 1500 [--seed 1] [--keep FOLDER]
"""
import os
import random
import re
import sys
import tempfile

sys.path.insert(0, os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
import support

PROGRAM = '''
int x = 1 , y [ 4 ] ; static int hidden ; extern int outside ; struct s { char c ; int i ; } ;
typedef struct s alias ; void isr ( void ) { hidden = 1 ; } int declared ( int , char * ) ;
static int helper ( int a ) { struct s v = { 1 , 2 } ; return v . c + a * ( x ? 3 : y [ 1 ] ) ; }
int f ( int n ) { int i , sum = 0 ; alias two [ 2 ] ; static int count = 5 ;
for ( i = 0 ; i < n ; i ++ ) { sum += helper ( i ) ; if ( sum > 10 ) break ; else continue ; }
while ( n -- ) switch ( n ) { case 1 : sum ++ ; break ; default : sum -- ; }
do { two [ 0 ] . i = sum ; } while ( -- sum > 0 ) ; again : if ( n < -20 ) goto again ;
return declared ( sum , "a" "b" ) + outside + count + two [ 0 ] . i ; }
'''
SYMBOLS = ['x', 'y', 'hidden', 'outside', 's', 'alias', 'isr', 'declared', 'helper', 'f', 'n', 'i', 'two', 'count',
           'again', 'nowhere', 'int', 'struct s', '']
NUMBERS = ['0', '1', '2', '3', '8', '64', '-1', '4 * 2', '0x1000', '99999999999', '1.5', 'sizeof(int)', 'x', "'a'", '']
STRINGS = ['".d"', '".e"', '"all"', 'L"w"', '""', '".a" ".b"', '"open', '4']
COMMON = ['diag_suppress 1', 'diag_warning nonsense', 'diag_default', 'pack(push)', 'pack(pop)', 'pack(show)',
          'pack(2', 'STDC FP_CONTRACT ON', 'GCC visibility push(hidden)', 'GCC visibility pop', 'once', '', 'unheard_of']


def names():
    table = open(os.path.join(support.ROOT, 'src', 'lex', 'pragmas.def')).read()
    ids = dict(re.findall(r'^PRAGMA_ID\((\w+), *"(\w+)"', table, re.M))
    return [ids[kind] for kind in re.findall(r'^TARGET_PRAGMA\((\w+)', table, re.M)]


def operand(chance):
    return chance.choice(chance.choice((SYMBOLS, NUMBERS, STRINGS)))


def well_formed(name, chance):
    symbol, number = chance.choice(SYMBOLS), chance.choice(NUMBERS)
    if 'ITERATE' in name or name == 'UNROLL':
        return '(%s)' % ', '.join(chance.choice(NUMBERS) for _ in range(chance.randrange(4)))
    if 'SECTION' in name or name == 'FUNCTION_OPTIONS':
        return '(%s%s)' % ('' if name.startswith('SET_') else symbol + ', ', chance.choice(STRINGS))
    if name in ('DATA_ALIGN', 'STRUCT_ALIGN', 'DATA_MEM_BANK', 'LOCATION', 'FUNC_INTERRUPT_THRESHOLD'):
        return '(%s, %s)' % (symbol, number)
    return '(%s)' % symbol


def pragma(options, chance):
    if chance.random() < .15:
        return chance.choice(COMMON)
    name = chance.choice(options.names)
    kind = chance.random()
    if kind < .7:
        return name + well_formed(name, chance)
    if kind < .9:
        return name + ' (' + ','.join(operand(chance) for _ in range(chance.randrange(5))) + ')' * chance.randrange(3)
    return name + ' ' + ' '.join(chance.choice('() , ; " ( " # \\'.split() + [operand(chance)]) for _ in range(4))


def as_line(text, chance):
    if '"open' not in text and '\\' not in text and chance.random() < .25:
        return ' _Pragma("%s") ' % text.replace('"', '\\"')
    return '\n#pragma %s\n' % text


def with_pragmas(options, chance):
    tokens = PROGRAM.split()
    for _ in range(chance.choice((1, 1, 2, 3, 10))):
        tokens.insert(chance.randrange(len(tokens) + 1), as_line(pragma(options, chance), chance))
    return ' '.join(tokens) + '\n'


def without_attachments(text):
    """The code alone: no pragmas, no attributes that pragmas set, no names and breaks that follow from lines."""
    text = ''.join(re.sub(r'^#pragma .*$|/\*.*?\*/', '', text, flags=re.M).split())
    text = re.sub(r'__attribute__\(\(_*(section|aligned|weak|used|visibility)_*(\(("[^"]*"|\d+)\))?\)\)', '', text)
    return re.sub(r'__\d+_\d+_(?=[a-z])', '', text)


def translate(options, text, flags, work):
    source, made = os.path.join(work, 'pragmas.c'), os.path.join(work, 'made.c')
    open(source, 'w').write(text)
    done = support.run([options.rvparse] + flags + ['--gen_c_file_name=' + made, source], cwd=work, timeout=20)
    return done, open(made).read() if done.returncode == 0 and os.path.exists(made) else None


def check(options, number):
    chance = random.Random(options.seed * 1000003 + number)
    text = with_pragmas(options, chance)
    flags = chance.choice(([], ['--c99'], ['--strict'], ['-E'], ['--noenhance'], ['--c++'], ['-K'], ['--no_gcc']))
    with tempfile.TemporaryDirectory() as work:
        done, made = translate(options, text, flags, work)
        _, plain = translate(options, PROGRAM, flags, work) if made else (None, None)
    why = None
    if done.returncode not in (0, 2) or support.crashed(done):
        why = 'exit %d' % done.returncode
    elif plain and '--noenhance' not in flags and 'pack(2' not in text and \
            without_attachments(made.partition('__ZOKCPFE__')[2]) != without_attachments(
                plain.partition('__ZOKCPFE__')[2]):
        why = 'other code'
    if why and options.keep:
        os.makedirs(options.keep, exist_ok=True)
        open(os.path.join(options.keep, '%d.c' % number), 'w').write(text)
    return why and '%s: %s: %s' % (' '.join(flags), why, done.stderr.decode(errors='replace').strip()[:200])


def main():
    options = support.arguments('random pragmas', ('--count', dict(type=int, default=3000)),
                                ('--seed', dict(type=int, default=1)), ('--keep', dict(default=None)))
    options.names = names()
    results = support.in_parallel(lambda number: (number, check(options, number)), range(options.count))
    failures = [(number, why) for number, why in results if why]
    for number, why in failures[:30]:
        print('input %d: %s' % (number, why))
    support.finish('pragmas', len(results) - len(failures), len(failures))


main()
