"""Makes the man page and the shell completion from the option table.

    make_docs.py man OPTIONS_DEF OUTPUT
    make_docs.py completion OPTIONS_DEF OUTPUT
"""
import re
import sys

# Arguments that are names of files or directories, for the completion.
DIRECTORY_OPTIONS = {'include_directory', 'sys_include', 'pch_dir', 'instantiation_dir', 'zok_base_dir'}
FILE_OPTIONS = {'i_output_file', 'il_output_file', 'pp_output_file', 'ah_output_file', 'object_file', 'opt_cmdfile',
                'ii_file', 'template_info_file', 'definition_list_file', 'list', 'xref', 'error_output',
                'gen_c_file_name', 'create_pch', 'use_pch', 'preinclude', 'preinclude_macros'}
WORDS = {'fp_mode': 'relaxed strict', 'float_operations_allowed': 'all none 32 64', 'abi': 'eabi',
         'mem_model:code': 'near far flat small large', 'mem_model:const': 'data far far_aggregates',
         'mem_model:data': 'near far far_aggregates small large huge flat', 'long_precision_bits': '32 40',
         'wchar_t_bits': '16 32', 'visibility': 'hidden protected default',
         'dllexport_visibility': 'hidden protected default', 'instantiate': 'none all used local',
         'entry_parm': 'none name address', 'exit_parm': 'none name address',
         'size_speed_goal': 'high_risk_performance medium_risk_performance low_risk_performance '
                            'low_risk_size medium_risk_size high_risk_size'}

ROW = re.compile(r'''^OPTION(_ALSO)?\(\s*(\w+),\s*"([^"]+)",\s*(?:'(.)'|0),\s*([01]),\s*([01]),\s*([01]),
                     \s*(\w+)(?:\([^)]*\))?,\s*"([^"]*)"\)''', re.M | re.X)


class Option:
    def __init__(self, match):
        self.is_second_spelling = match.group(1) is not None
        self.id, self.name, self.letter = match.group(2), match.group(3), match.group(4)
        self.takes_argument = match.group(6) == '1'
        self.offered = match.group(8) != 'NOT_OFFERED'
        self.help = match.group(9)


def read_options(path):
    text = open(path).read()
    options = [Option(match) for match in ROW.finditer(text)]
    if len(options) != len(re.findall(r'^OPTION(?:_ALSO)?\(\w', text, re.M)):
        sys.exit('make_docs.py: a row of %s was not understood' % path)
    return [option for option in options if option.offered]


def roff(text):
    return text.replace('\\', '\\e').replace('-', '\\-').replace("'", '\\(aq')


def man_entry(option, before):
    spelling = '\\fB%s\\fR' % roff('--' + option.name) + ('=\\fIvalue\\fR' if option.takes_argument else '')
    if option.letter:
        spelling += ', \\fB%s\\fR' % roff('-' + option.letter) + (' \\fIvalue\\fR' if option.takes_argument else '')
    help_text = option.help or 'the opposite of --%s' % before.name
    return '.TP\n%s\n%s.\n' % (spelling, roff(help_text[0].upper() + help_text[1:]))


def man_page(options):
    first_of_id = {}
    for option in options:
        first_of_id.setdefault(option.id, option)
    entries = ''.join(man_entry(option, first_of_id[option.id]) for option in options)
    return MAN_HEAD + entries + MAN_TAIL


def completion(options):
    names = ' '.join('--' + option.name + ('=' if option.takes_argument else '') for option in options)
    letters = ' '.join('-' + option.letter for option in options if option.letter)
    cases = ''.join('    --%s) COMPREPLY=($(compgen -W "%s" -- "$word")); return ;;\n' % (name, words)
                    for name, words in WORDS.items())
    directories = '|'.join('--' + name for name in sorted(DIRECTORY_OPTIONS))
    files = '|'.join('--' + name for name in sorted(FILE_OPTIONS))
    return COMPLETION % dict(names=names, letters=letters, cases=cases, directories=directories, files=files)


MAN_HEAD = r'''.TH RVPARSE 1
.SH NAME
rvparse \- C and C++ front end for the Rovane family of signal processors
.SH SYNOPSIS
.B rvparse
.RI [ options ]
.I source
.SH DESCRIPTION
.B rvparse
preprocesses, parses and checks a C or C++ source file and writes one C file that means the same.  The name of that
file is the source's with the suffix replaced by
.BR .int.c .
Nothing behind the source's name is read.  The name
.B \-
stands for the standard input.
.PP
A long option may be abbreviated as long as one option only begins so.  Its argument follows behind an equal sign or
as the next word; the argument of a letter follows it directly or as the next word.  Letters may stand in one word.
.PP
Without an option that says the language, a source whose name ends in
.BR .c , .i " or " .h
is C in the GNU mode, and any other is C++ in the GNU mode.  An option that is given beats what a mode implies.
.SH OPTIONS
'''

MAN_TAIL = r'''.SH EXIT STATUS
.TP
.B 0
No error; there may have been warnings.
.TP
.B 2
At least one error.
.TP
.B 4
A catastrophe, or a fault of the command line.
.PP
An internal error ends the process with SIGABRT.
.SH FILES
.TP
.I lib/predefined_macros.txt
Below the base directory: macros to predefine.  Each line has the modes for which it holds, separated by commas (gnu,
gcc, gpp, microsoft, strict, cpp, all, each with ! for the opposite), then yes or no for whether the macro must not be
redefined, then its name and its value.  Lines that start with # are comments.
.TP
.I option files
Words are separated by white space.  Double quotes hold words together, a backslash stands before a quote or backslash
that is meant as such.  Comments run from /* to */, from ; or from # to the end of the line; # is a plain character in
a word with a dash.
.SH CROSS REFERENCE
The file of
.B \-\-xref
has one line for each declaration and use, with fields separated by tabs: a mark, the name, the kind of the entity, the
file, the line and the column.  The marks are D (definition), d (declaration), M (modified), C (changed: read and
modified), U (used), A (address taken), R (other reference) and E (error).
.SH ENVIRONMENT
.TP
.B C_DIR
Directories, separated by semicolons, that are searched for included files behind those of the options.
.B ROV_C_DIR
comes first and hides it.
.TP
.B ZOK_BASE
The base directory, where
.B \-\-zok_base_dir
doesn't name one.
.TP
.B SOURCE_DATE_EPOCH
The time that dates in the output follow, in seconds since 1970.
'''

COMPLETION = r'''# bash completion for rvparse
_rvparse()
{
  local word=${COMP_WORDS[COMP_CWORD]} option=${COMP_WORDS[COMP_CWORD-1]}
  COMPREPLY=()
  if [[ $word == '=' ]]; then
    word=
  elif [[ $option == '=' ]]; then
    option=${COMP_WORDS[COMP_CWORD-2]}
  fi
  case $option in
%(cases)s    %(directories)s|-I) COMPREPLY=($(compgen -d -- "$word")); return ;;
    %(files)s|-L|-X|-@) COMPREPLY=($(compgen -f -- "$word")); return ;;
  esac
  case $word in
    --*) COMPREPLY=($(compgen -W "%(names)s" -- "$word"))
         [[ ${COMPREPLY[0]} == *= ]] && compopt -o nospace ;;
    -*) COMPREPLY=($(compgen -W "%(letters)s" -- "$word")) ;;
    *) COMPREPLY=($(compgen -f -- "$word")) ;;
  esac
}
complete -o filenames -F _rvparse rvparse
'''


def main():
    kind, options_def, output = sys.argv[1:]
    options = read_options(options_def)
    text = man_page(options) if kind == 'man' else completion(options)
    with open(output, 'w') as file:
        file.write(text)


main()
