"""One case: a source file whose first comment lines say how it is translated and what it proves.

    // options: --c99 -DX=1      options of the run (several such lines add up)
    // proves: one sentence
    // status: 2                 exit status, when it is neither 0 nor 2 for expected errors
    // needs: arm                skipped without the cross compiler
    // expect: warning tag       on the line where the message is due; expect-1, expect+1 count lines

Goldens beside it, each checked when it exists:

    .pp     preprocessed text (the run adds -E unless the options say otherwise)
    .msg    everything on the error stream
    .gen.c  the generated C file
    .lst    the raw listing
    .xref   the cross-reference file
    .dep    the standard output of a run whose options ask for lists
    .out    what the program prints; the generated C is compiled for the arm and run
A case without goldens and expectations must pass without a message.
"""
import os
import re
import shlex
import shutil
import subprocess
import tempfile

import lit.Test
import lit.formats

RUN_OPTIONS = ['--abi=eabi', '--long_precision_bits=32', '--wchar_t_bits=32', '--unsigned_chars']
ARM_GCC = 'arm-linux-gnueabihf-gcc'
ARM_GXX = 'arm-linux-gnueabihf-g++'
ARM_FLAGS = ['-marm', '-std=gnu89', '-fcommon', '-fno-strict-aliasing', '-fwrapv', '-w']
ARM_ROOT = '/usr/arm-linux-gnueabihf'
GOLDENS = ['.pp', '.msg', '.gen.c', '.lst', '.xref', '.dep', '.out']
EXPECT = re.compile(r'expect([+-]\d+)?:\s*(remark|warning|error|catastrophe|advisory)\s+(\w+)')
MESSAGE = re.compile(r'^"([^"]*)", line (\d+)(?: \(col\. \d+\))?: '
                     r'(remark|warning|error|fatal error|advisory) #(\d+)')
AT_END = re.compile(r'^At end of source: (remark|warning|error|fatal error|advisory) #(\d+)')

_arm_includes = None


def arm_includes():
    """--sys_include options for the cross compiler's headers, its own folder first."""
    global _arm_includes
    if _arm_includes is None:
        own = subprocess.run([ARM_GCC, '-print-file-name=include'], capture_output=True, text=True).stdout.strip()
        _arm_includes = ['--sys_include=' + own, '--sys_include=' + ARM_ROOT + '/include']
    return _arm_includes


class CaseFormat(lit.formats.FileBasedTest):
    def __init__(self, executable, catalogue, rewrite):
        self.executable = executable
        self.rewrite = rewrite
        self.tags = {}
        for line in open(catalogue):
            row = re.match(r'(?:MESSAGE|PHRASE)\(\s*(\d+),\s*(\w+)', line)
            if row:
                self.tags[int(row.group(1))] = row.group(2)

    def getTestsInDirectory(self, *place):
        """The sources of a folder; goldens and files that a run by hand left there are none."""
        return (test for test in super().getTestsInDirectory(*place) if not test.path_in_suite[-1].endswith(('.int.c', '.gen.c')))

    def execute(self, test, lit_config):
        source = test.getSourcePath()
        case = Case(self, source)
        if case.needs_arm and not shutil.which(ARM_GCC):
            return lit.Test.UNSUPPORTED, 'no cross compiler'
        with tempfile.TemporaryDirectory() as folder:
            problems = case.run(folder)
        if problems:
            return lit.Test.FAIL, '\n'.join(problems)
        return lit.Test.PASS, ''


class Case:
    def __init__(self, form, source):
        self.form = form
        self.source = source
        self.base = os.path.splitext(source)[0]
        self.options, self.status = [], None
        text = open(source, errors='replace').read()
        self.text = text
        for line in text.splitlines()[:12]:
            header = re.match(r'\s*(?://|/\*)\s*(options|status|needs):\s*(.*?)\s*(?:\*/)?$', line)
            if not header:
                continue
            if header.group(1) == 'options':
                self.options += shlex.split(header.group(2))
            elif header.group(1) == 'status':
                self.status = int(header.group(2))
        self.goldens = [g for g in GOLDENS if os.path.exists(self.base + g)]
        self.needs_arm = '.out' in self.goldens or re.search(r'^\s*//\s*needs: arm', text, re.M)

    def expectations(self):
        found = []
        for number, line in enumerate(self.text.splitlines(), 1):
            for match in EXPECT.finditer(line):
                found.append((number + int(match.group(1) or 0), match.group(2), match.group(3)))
        return sorted(found)

    def command(self, extra):
        return [self.form.executable] + extra + self.options + [os.path.basename(self.source)]

    def call(self, folder, extra):
        env = dict(os.environ, SOURCE_DATE_EPOCH='0', TZ='UTC', ASAN_OPTIONS='detect_leaks=0')
        return subprocess.run(self.command(extra), cwd=folder, capture_output=True, timeout=50, env=env)

    def run(self, folder):
        where = os.path.dirname(self.source)
        name = os.path.basename(self.source)
        shutil.copy(self.source, os.path.join(folder, name))
        if os.path.isdir(os.path.join(where, 'Inputs')):
            os.symlink(os.path.join(where, 'Inputs'), os.path.join(folder, 'Inputs'))
        problems = []
        expected = self.expectations()
        textual = [g for g in self.goldens if g != '.out']
        if not self.goldens or expected or any(g in textual for g in ('.msg', '.gen.c', '.lst', '.xref', '.dep')):
            problems += self.run_plain(folder, name, expected)
        if '.pp' in self.goldens:
            run = self.call(folder, ['-E'] if not any(o in self.options for o in ('-E', '-P', '-C')) else [])
            problems += self.compare('.pp', run.stdout)
            problems += self.crashed(run)
        if '.out' in self.goldens:
            problems += self.run_program(folder, name)
        return problems

    def run_plain(self, folder, name, expected):
        extra = []
        if expected or not self.goldens:
            extra += ['--display_error_number', '--brief_diagnostics']
        if '.lst' in self.goldens:
            extra.append('--list=case.lst')
        if '.xref' in self.goldens:
            extra.append('--xref=case.xref')
        if self.needs_arm:
            extra += RUN_OPTIONS + arm_includes()
        run = self.call(folder, extra)
        problems = self.crashed(run)
        err = run.stderr.decode(errors='replace')
        if '.msg' in self.goldens:
            problems += self.compare('.msg', run.stderr)
        elif expected or not self.goldens:
            problems += self.check_messages(err, expected)
        if '.dep' in self.goldens:
            problems += self.compare('.dep', run.stdout)
        for golden, made in (('.gen.c', os.path.splitext(name)[0] + '.int.c'), ('.lst', 'case.lst'),
                             ('.xref', 'case.xref')):
            if golden in self.goldens:
                path = os.path.join(folder, made)
                if not os.path.exists(path):
                    problems.append('no file %s was made\n%s' % (made, err))
                else:
                    problems += self.compare(golden, open(path, 'rb').read())
        wanted = self.status
        if wanted is None and not problems and '.msg' not in self.goldens:
            wanted = 2 if any(e[1] == 'error' for e in expected) else 4 if any(
                e[1] == 'catastrophe' for e in expected) else 0
        if wanted is not None and run.returncode != wanted:
            problems.append('exit status %d, expected %d\n%s' % (run.returncode, wanted, err))
        return problems

    def check_messages(self, err, expected):
        found = []
        for line in err.splitlines():
            match, at_end = MESSAGE.match(line), AT_END.match(line)
            if not match and not at_end:
                continue
            number = int(match.group(2)) if match else len(self.text.splitlines())
            severity, code = (match.groups()[2:] if match else at_end.groups())
            found.append((number, severity.replace('fatal error', 'catastrophe'), self.form.tags.get(int(code), '?')))
        found.sort()
        if found == expected:
            return []
        missing = [e for e in expected if e not in found]
        surplus = [f for f in found if f not in expected]
        return ['messages differ', '  missing: %s' % missing, '  surplus: %s' % surplus, err]

    def run_program(self, folder, name):
        run = self.call(folder, RUN_OPTIONS + arm_includes() + ['--gen_c_file_name=case.int.c'])
        if run.returncode != 0:
            return ['translation failed (%d)' % run.returncode, run.stderr.decode(errors='replace')]
        library = ['-lsupc++'] if name.endswith('.cpp') else []
        steps = [[ARM_GCC] + ARM_FLAGS + ['case.int.c', '-o', 'case.exe'] + library + ['-lm'],
                 ['qemu-arm', '-L', ARM_ROOT, './case.exe']]
        for step in steps:
            done = subprocess.run(step, cwd=folder, capture_output=True, timeout=50)
            if step is not steps[-1] and done.returncode != 0:
                return ['failed: ' + ' '.join(step), done.stderr.decode(errors='replace')[:4000]]
        out = done.stdout + (b'exit %d\n' % done.returncode if done.returncode else b'')
        if self.form.rewrite:
            out = self.direct_output(folder, name)
        return self.compare('.out', out)

    def direct_output(self, folder, name):
        """What a direct build of the source prints: the only thing a .out golden is ever made from."""
        is_cplusplus = name.endswith('.cpp')
        compiler = [ARM_GXX, '-std=gnu++98'] if is_cplusplus else [ARM_GCC, '-std=gnu99']
        subprocess.run(compiler + ['-marm', '-funsigned-char', '-w', name, '-o', 'direct.exe', '-lm'],
                       cwd=folder, check=True)
        done = subprocess.run(['qemu-arm', '-L', ARM_ROOT, './direct.exe'], cwd=folder, capture_output=True)
        return done.stdout + (b'exit %d\n' % done.returncode if done.returncode else b'')

    @staticmethod
    def crashed(run):
        err = run.stderr.decode(errors='replace')
        if run.returncode < 0 or 'INTERNAL ERROR' in err or 'AddressSanitizer' in err or 'runtime error' in err:
            return ['crash (status %d)' % run.returncode, err[-3000:]]
        return []

    def compare(self, golden, made):
        path = self.base + golden
        wanted = open(path, 'rb').read()
        if wanted == made:
            return []
        if self.form.rewrite:
            open(path, 'wb').write(made)
            return []
        import difflib
        diff = difflib.unified_diff(wanted.decode(errors='replace').splitlines(),
                                    made.decode(errors='replace').splitlines(), golden, 'made', lineterm='')
        return ['%s differs' % golden] + list(diff)[:60]
