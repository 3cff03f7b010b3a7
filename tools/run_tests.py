"""Builds the presets, runs unit tests and cases in each and, once, the long runs; prints one summary line."""
import glob
import json
import os
import subprocess
import sys
import tempfile

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
UNIT_TESTS = ['unit_tests', 'tool_layer_tests']
LIT = os.path.join(ROOT, 'tools', 'lit')
# (script, arguments): each prints "NAME: N passed, N failed, N skipped" as its last line.
LONG_RUNS = [
    ('tests/table_coverage.py', []),
    ('tests/command_lines.py', []),
    ('tests/output_names.py', []),
    ('tests/include_graph.py', []),
    ('tests/reports.py', []),
    ('tests/real/run.py', []),
    ('tests/real/misra.py', []),
    ('tests/real/headers.py', ['--sample', '250']),
    ('tests/torture/run.py', ['--sample', '300']),
    ('tests/torture/diagnostics.py', []),
    ('tests/torture/dg.py', ['--sample', '150']),
    ('tests/random/csmith.py', ['--from', '1', '--to', '30']),
    ('tests/random/dialect.py', ['--count', '20']),
    ('tests/random/macros.py', ['--count', '600']),
    ('tests/random/layouts.py', ['--count', '40']),
    ('tests/random/initializers.py', ['--count', '40']),
    ('tests/random/pragmas.py', ['--count', '400']),
]
SANITIZED_RUNS = [('tests/random/fuzz.py', ['--count', '500']), ('tests/random/pragmas.py', ['--count', '300'])]


class Totals:
    passed = failed = 0


def build(preset):
    for command in (['cmake', '--preset', preset], ['cmake', '--build', '--preset', preset]):
        done = subprocess.run(command, cwd=ROOT, capture_output=True, text=True)
        if done.returncode != 0:
            print((done.stdout + done.stderr)[-6000:])
            print('%s does not build' % preset)
            Totals.failed += 1
            return False
    return True


def run_cases(folder):
    with tempfile.NamedTemporaryFile(suffix='.json') as report:
        done = subprocess.run([sys.executable, LIT, '-s', '-v', '--param', 'build=' + folder, '-o', report.name, 'tests'],
                              cwd=ROOT, capture_output=True, text=True)
        try:
            tests = json.load(open(report.name))['tests']
        except (ValueError, KeyError):
            print(done.stdout + done.stderr)
            Totals.failed += 1
            return
    bad = [t for t in tests if t['code'] in ('FAIL', 'TIMEOUT', 'UNRESOLVED')]
    for test in bad:
        print('FAILED %s\n%s\n' % (test['name'], test['output']))
    Totals.failed += len(bad)
    Totals.passed += sum(t['code'] == 'PASS' for t in tests)
    print('cases in %s: %d, %d failed' % (os.path.basename(folder), len(tests), len(bad)))


def run_unit_tests(folder, name):
    program = os.path.join(folder, name)
    if not os.path.exists(program):
        return
    report = program + '.json'
    if os.path.exists(report):
        os.remove(report)
    done = subprocess.run([program, '--gtest_brief=1', '--gtest_output=json:' + report], capture_output=True, text=True,
                          env=dict(os.environ, ASAN_OPTIONS='detect_leaks=0'))
    if not os.path.exists(report):
        print(name + ' crashed\n' + (done.stdout + done.stderr)[-4000:])
        Totals.failed += 1
        return
    result = json.load(open(report))
    Totals.passed += result['tests'] - result['failures']
    Totals.failed += result['failures']
    if result['failures'] or done.returncode != 0:
        print(done.stdout[-8000:])
    print('%s in %s: %d, %d failed' % (name, os.path.basename(folder), result['tests'], result['failures']))


def run_examples(folder):
    """Runs the examples that have their output beside them."""
    outputs = sorted(glob.glob(os.path.join(ROOT, 'examples', '*.out')))
    failed = 0
    for path in outputs:
        name = os.path.splitext(os.path.basename(path))[0]
        done = subprocess.run([os.path.join(folder, name)], capture_output=True, text=True,
                              env=dict(os.environ, ASAN_OPTIONS='detect_leaks=0'))
        if done.stdout + done.stderr != open(path).read():
            print('FAILED examples/%s prints\n%s' % (name, done.stdout + done.stderr))
            failed += 1
    Totals.passed += len(outputs) - failed
    Totals.failed += failed
    print('examples in %s: %d, %d failed' % (os.path.basename(folder), len(outputs), failed))


def run_script(script, arguments, folder):
    path = os.path.join(ROOT, script)
    if not os.path.exists(path):
        return
    done = subprocess.run([sys.executable, path, '--build', folder] + arguments, cwd=ROOT, capture_output=True, text=True)
    lines = done.stdout.strip().splitlines()
    last = lines[-1] if lines else ''
    words = last.replace(',', '').split()
    try:
        passed, failed = int(words[words.index('passed') - 1]), int(words[words.index('failed') - 1])
    except (ValueError, IndexError):
        passed, failed = 0, 1
    if failed or done.returncode != 0:
        print(done.stdout[-8000:] + done.stderr[-4000:])
        failed = failed or 1
    Totals.passed += passed
    Totals.failed += failed
    print(last or script + ' printed nothing')


def main():
    quick = 'quick' in sys.argv[1:]
    for preset, folder in (('release', 'build'), ('sanitizers', 'build-sanitizers')):
        if quick and preset != 'release':
            break
        if not build(preset):
            continue
        path = os.path.join(ROOT, folder)
        for name in UNIT_TESTS:
            run_unit_tests(path, name)
        run_examples(path)
        run_cases(path)
        if quick:
            continue
        for script, arguments in (LONG_RUNS if preset == 'release' else SANITIZED_RUNS):
            run_script(script, arguments, path)
    print('%d passed, %d failed' % (Totals.passed, Totals.failed))
    return 1 if Totals.failed else 0


sys.exit(main())
