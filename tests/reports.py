"""What reads the diagnostics of a run: tools/to-sarif, Vim's errorformat, the problem matchers of VS Code."""
import json
import os
import re
import shutil
import subprocess
import tempfile

import support

TO_SARIF = os.path.join(support.ROOT, 'tools', 'to-sarif')
EDITORS = os.path.join(support.ROOT, 'docs', 'editors')
SOURCE = '''#include "has blanks.h"
/* A tab, a redeclaration whose message names a line, a remark, an error. */
\tint tabbed = 010;
extern int twice; extern char *twice; const int f(void);
#define SUM(a) 1 + a
int y = 1 +; int z = 1.2.3;
'''
HEADER = 'extern int no_newline;'
OPTIONS = ['--check_misra=7.1,19.4,19.15', '--remarks']
# (rule, level, file, line, column, a word of the message) in the order of the run.
RESULTS = [
    ('last_line_incomplete', 'warning', 'has blanks.h', 1, 23, 'newline'),
    ('MISRA-C:2004-19.15', 'warning', 'has blanks.h', 1, 1, 'twice'),
    ('MISRA-C:2004-7.1', 'warning', 'x.c', 3, 15, 'octal escape'),
    ('not_compatible_with_previous_decl', 'error', 'x.c', 4, 32, 'twice'),
    ('useless_type_qualifier_on_return_type', 'note', 'x.c', 4, 51, 'meaningless'),
    ('MISRA-C:2004-19.4', 'warning', 'x.c', 5, 9, 'certain constructs'),
    ('exp_primary_expr', 'error', 'x.c', 6, 12, 'expected'),
    ('extra_chars_on_number', 'error', 'x.c', 6, 25, 'number'),
]
FORMS = [['--brief_diagnostics'], ['--brief_diagnostics', '--display_error_number'], ['--no_brief_diagnostics'],
         ['--no_brief_diagnostics', '--display_error_number'], ['--no_brief_diagnostics', '--no_wrap_diagnostics']]

# The parts of SARIF 2.1.0 that a log may use: {property: (type, required)}; no object has others.
OBJECTS = {
    'sarifLog': {'$schema': ('uri', False), 'version': ('version', True), 'runs': (['run'], True)},
    'run': {'tool': ('tool', True), 'columnKind': ('columnKind', False), 'invocations': (['invocation'], False),
            'results': (['result'], False), 'originalUriBaseIds': ({'artifactLocation'}, False)},
    'tool': {'driver': ('toolComponent', True)},
    'toolComponent': {'name': ('string', True), 'rules': (['reportingDescriptor'], False)},
    'reportingDescriptor': {'id': ('string', True), 'name': ('string', False),
                            'shortDescription': ('multiformatMessageString', False), 'properties': ('propertyBag', False)},
    'multiformatMessageString': {'text': ('string', True)},
    'invocation': {'executionSuccessful': ('boolean', True)},
    'result': {'ruleId': ('string', False), 'ruleIndex': ('index', False), 'level': ('level', False),
               'message': ('message', True), 'locations': (['location'], False), 'relatedLocations': (['location'], False)},
    'message': {'text': ('string', True)},
    'location': {'physicalLocation': ('physicalLocation', False)},
    'physicalLocation': {'artifactLocation': ('artifactLocation', True), 'region': ('region', False)},
    'artifactLocation': {'uri': ('uri', False), 'uriBaseId': ('string', False)},
    'region': {'startLine': ('ordinal', False), 'startColumn': ('ordinal', False)},
}
SCALARS = {
    'string': lambda v: isinstance(v, str) and v != '',
    'uri': lambda v: isinstance(v, str) and re.fullmatch(r"[A-Za-z0-9:/?#@!$&'()*+,;=._~%\[\]-]+", v) is not None,
    'version': lambda v: v == '2.1.0',
    'boolean': lambda v: isinstance(v, bool),
    'index': lambda v: isinstance(v, int) and v >= 0,
    'ordinal': lambda v: isinstance(v, int) and v >= 1,
    'level': lambda v: v in ('none', 'note', 'warning', 'error'),
    'columnKind': lambda v: v in ('utf16CodeUnits', 'unicodeCodePoints'),
    'propertyBag': lambda v: isinstance(v, dict) and len(set(v.get('tags', []))) == len(v.get('tags', [])),
}


def faults(value, kind, path='log'):
    """What of a JSON value is not as the schema's structure wants it."""
    if isinstance(kind, list):
        if not isinstance(value, list):
            return [path + ' is no array']
        return [f for i, entry in enumerate(value) for f in faults(entry, kind[0], '%s[%d]' % (path, i))]
    if isinstance(kind, set):
        return [f for name, entry in value.items() for f in faults(entry, *kind, '%s.%s' % (path, name))]
    if kind in SCALARS:
        return [] if SCALARS[kind](value) else ['%s is no %s: %r' % (path, kind, value)]
    if not isinstance(value, dict):
        return [path + ' is no object']
    row = OBJECTS[kind]
    found = ['%s has an unknown %s' % (path, name) for name in value if name not in row]
    found += ['%s has no %s' % (path, name) for name, (_, required) in row.items() if required and name not in value]
    for name, entry in value.items():
        found += faults(entry, row[name][0], '%s.%s' % (path, name)) if name in row else []
    return found


def faults_of_log(log):
    found = faults(log, 'sarifLog')
    for run in log['runs']:
        rules = [rule['id'] for rule in run['tool']['driver']['rules']]
        if len(set(rules)) != len(rules):
            found.append('a rule stands twice')
        found += ['result %d has the rule of another' % i for i, result in enumerate(run['results'])
                  if rules[result['ruleIndex']] != result['ruleId']]
    return found


def to_sarif(text, *options):
    return json.loads(subprocess.run([TO_SARIF, *options], input=text, capture_output=True, check=True).stdout)


def seen_in(log):
    for result in log['runs'][0]['results']:
        place = result['locations'][0]['physicalLocation']
        region = place['region']
        yield (result['ruleId'], result['level'], place['artifactLocation']['uri'].replace('%20', ' '),
               region['startLine'], region.get('startColumn', 0), result['message']['text'])


def compare(found, wanted, what):
    """Rows of `found` begin as those of `wanted`, and their text holds the last word of it; None is not compared."""
    found, problems = list(found), []
    if len(found) != len(wanted):
        problems.append('%s: %d entries, expected %d\n%s' % (what, len(found), len(wanted), found))
    for row, expected in zip(found, wanted):
        same = all(e is None or e == f for f, e in zip(row[:-1], expected[:-1]))
        if not same or expected[-1] not in row[-1]:
            problems.append('%s: %s, expected %s' % (what, row, expected))
    return problems


def check_sarif(run):
    problems = []
    for form in FORMS:
        log = to_sarif(lines_of(run, form))
        full = '--no_brief_diagnostics' in form
        wanted = [r if full else r[:4] + (0,) + r[5:] for r in RESULTS] + GONE_RESULT
        problems += compare(seen_in(log), wanted, 'sarif ' + ' '.join(form)) + faults_of_log(log)
        if not log['runs'][0]['invocations'][0]['executionSuccessful']:
            problems.append('a run that came to its end is no success')
    related = log['runs'][0]['results'][3].get('relatedLocations', [{}])[0].get('physicalLocation', {})
    if related.get('region') != {'startLine': 4}:
        problems.append('no related location: %s' % related)
    return problems


def check_sarif_without_place(run):
    """A macro of the command line has no place; a fault of the command line ends the run."""
    log = to_sarif(run(['--check_misra=19.4', '-DX=-1', 'none.c']))
    rows = [(r['ruleId'], r['level'], 'locations' in r) for r in log['runs'][0]['results']]
    problems = faults_of_log(log)
    if rows != [('MISRA-C:2004-19.4', 'warning', False), ('cannot_open_file', 'error', False)]:
        problems.append('without a place: %s' % rows)
    if log['runs'][0]['invocations'][0]['executionSuccessful']:
        problems.append('a run without its source is a success')
    return problems


def check_root(run, folder):
    log = to_sarif(run(['--check_misra=7.1', os.path.join(folder, 'x.c')]), '--root', folder)
    problems = faults_of_log(log)
    uris = {r['locations'][0]['physicalLocation']['artifactLocation']['uri'] for r in log['runs'][0]['results']}
    if uris != {'x.c', 'has%20blanks.h'}:
        problems.append('names below the root: %s' % uris)
    return problems


# The form with a column stands where the source line is gone, as that of standard input is.
GONE = b'# 1 "gone.c"\nint f(void)\n{\n  int unused;\n\n  return 1;\n}\n'
GONE_RESULT = [('declared_but_not_referenced', 'warning', 'gone.c', 3, 7, 'unused')]


def lines_of(run, form):
    """The error stream, and behind it a message in the form with a column."""
    return run(form + OPTIONS + ['x.c']) + run(form + ['-'], stdin=GONE)


def virtual_column(row):
    """What Vim counts: a tab goes to the next multiple of eight."""
    text = SOURCE.splitlines()[row[3] - 1] if row[2] == 'x.c' else HEADER
    return len(text[:row[4] - 1].expandtabs(8)) + 1


def check_vim(run, folder):
    if not shutil.which('vim'):
        return None
    problems = []
    for form in FORMS:
        log = os.path.join(folder, 'log')
        open(log, 'wb').write(lines_of(run, form))
        script = ['source ' + os.path.join(EDITORS, 'rvparse.vim'), 'cgetfile ' + log,
                  'call writefile([json_encode(map(getqflist(), "extend(v:val, {\'file\': bufname(v:val.bufnr)})"))], "list")',
                  'qall!']
        subprocess.run(['vim', '-u', 'NONE', '-es', '--cmd', 'set nocp'] + [a for c in script for a in ('-c', c)],
                       cwd=folder, capture_output=True, timeout=60)
        entries = json.load(open(os.path.join(folder, 'list')))
        types = {'w': 'warning', 'e': 'error', 'i': 'note'}
        full = '--no_brief_diagnostics' in form
        found = [(None, types.get(e['type'].lower()), e['file'], e['lnum'], e['col'], e['text']) for e in entries if e['valid']]
        wanted = [(None,) + r[1:4] + (virtual_column(r) if full else 0, r[5].split(' ')[0]) for r in RESULTS]
        wanted += [(None,) + r[1:] for r in GONE_RESULT]
        problems += compare(found, wanted, 'vim ' + ' '.join(form))
    return problems


def check_vscode(run):
    task = json.load(open(os.path.join(EDITORS, 'vscode-tasks.json')))['tasks'][0]
    problems = []
    for form in FORMS[:2]:
        found = []
        for line in lines_of(run, form).decode().splitlines():
            for matcher in task['problemMatcher']:
                pattern = matcher['pattern']
                match = re.match(pattern['regexp'], line)
                if match:
                    level = match.group(pattern['severity']) if 'severity' in pattern else matcher['severity']
                    found.append((None, level.replace('info', 'note'), match.group(pattern['file']),
                                  int(match.group(pattern['line'])), int(match.group(pattern['column']) or 0),
                                  match.group(pattern['message'])))
        wanted = [(None,) + r[1:4] + (0, r[5]) for r in RESULTS] + [(None,) + r[1:] for r in GONE_RESULT]
        problems += compare(found, wanted, 'vscode ' + ' '.join(form))
    return problems


def main():
    options = support.arguments(__doc__)
    with tempfile.TemporaryDirectory() as folder:
        folder = os.path.realpath(folder)
        open(os.path.join(folder, 'x.c'), 'w').write(SOURCE)
        open(os.path.join(folder, 'has blanks.h'), 'w').write(HEADER)

        def run(arguments, stdin=None):
            return subprocess.run([options.rvparse] + arguments, cwd=folder, capture_output=True, input=stdin, timeout=60).stderr

        checks = [check_sarif(run), check_sarif_without_place(run), check_root(run, folder), check_vim(run, folder),
                  check_vscode(run)]
    for problem in [p for c in checks if c for p in c]:
        print(problem)
    failed = sum(bool(c) for c in checks)
    skipped = sum(c is None for c in checks)
    support.finish('reports', len(checks) - failed - skipped, failed, skipped)


main()
