"""Control and includes run downward: a folder includes folders of its own floor or below, and the named exceptions.
The tool layer stands beside the front end: it includes itself only, and of it the front end includes containers only."""
import collections
import glob
import os
import re
import sys

SOURCE = os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', 'src')
FLOORS = {'mem': 0, 'errors': 1, 'consts': 2, 'il': 2, 'lex': 3, 'parse': 4, 'lower': 5, 'check': 5, 'backend': 6,
          'driver': 7}
TOOL_FLOORS = {'DIAG': 0, 'CONTAINERS': 1, 'options': 1}
OPEN_TO_FRONT_END = {'CONTAINERS'}
# Data that every floor reads.
DATA_HEADERS = {'driver/flags.h', 'driver/flags.def', 'driver/target.h', 'driver/target_values.def',
                'lex/source_position.h', 'il/il_fwd.h', 'il/il_enums.h'}
# Services that stand in the driver's folder and are used by every floor: files, the unit in force, built-in names.
SERVICE_HEADERS = {'driver/host_envir.h', 'driver/trans_unit.h', 'driver/sys_predef.h'}
# (folder, header): macros and keywords are symbols; the error engine reads the line tables.
EXCEPTIONS = {
    'lex': {'parse/symbol_tbl.h', 'parse/symbol_ref.h', 'parse/scope_stk.h'},
    'errors': {'lex/source_input.h', 'lex/line_buffer.h', 'il/source_entities.h'},
}


def is_allowed(folder, target):
    if folder in TOOL_FLOORS:
        return TOOL_FLOORS.get(target, 99) <= TOOL_FLOORS[folder]
    if target in TOOL_FLOORS:
        return target in OPEN_TO_FRONT_END
    return FLOORS[target] <= FLOORS[folder]


def main():
    counts, wrong = collections.Counter(), []
    layers = {**FLOORS, **TOOL_FLOORS}
    for path in sorted(glob.glob(SOURCE + '/*/*.cpp') + glob.glob(SOURCE + '/*/*.h')):
        folder = os.path.basename(os.path.dirname(path))
        if folder not in layers:
            continue
        named = set() if folder in TOOL_FLOORS else DATA_HEADERS | SERVICE_HEADERS | EXCEPTIONS.get(folder, set())
        for header in re.findall(r'^#include "([\w/.]+)"', open(path).read(), re.M):
            target = header.split('/')[0]
            if target not in layers or header in named:
                continue
            counts[folder] += 1
            if not is_allowed(folder, target):
                wrong.append('%s/%s includes %s' % (folder, os.path.basename(path), header))
    known = set(open(os.path.join(os.path.dirname(os.path.abspath(__file__)), 'include_graph_known.txt')).read()
                .splitlines())
    new = [w for w in wrong if w not in known]
    gone = [k for k in known if k and not k.startswith('#') and k not in wrong]
    for line in new:
        print(line)
    for line in gone:
        print('no longer there, take it off the list: ' + line)
    failed = len(new) + len(gone)
    print('includes: %d passed, %d failed, 0 skipped' % (sum(counts.values()) - len(new), failed))
    return 1 if failed else 0


sys.exit(main())
