# The configuration of the source-in, golden-out cases.  `build` is the folder with the executable under test.
import os
import sys

sys.path.insert(0, os.path.dirname(__file__))
from case_format import CaseFormat

here = os.path.dirname(os.path.abspath(__file__))
build = lit_config.params.get('build', os.path.join(here, '..', 'build'))

config.name = 'rvparse'
config.suffixes = ['.c', '.i', '.cpp']
config.excludes = ['Inputs', 'unit', 'real', 'torture', 'random']
config.test_source_root = here
config.test_exec_root = os.path.join(os.path.abspath(build), 'cases')
config.test_format = CaseFormat(
    executable=os.path.join(os.path.abspath(build), 'rvparse'),
    catalogue=os.path.join(here, '..', 'src', 'errors', 'messages.def'),
    rewrite=bool(lit_config.params.get('rewrite')))
# A case that takes longer than this is a hang; each run inside a case has a shorter limit of its own.
try:
    import psutil  # noqa: F401  lit asks for it
    lit_config.maxIndividualTestTime = 60
except ImportError:
    pass
