" Vim compiler file for rvparse: copy it to ~/.vim/compiler/ and say ":compiler rvparse", then ":make x.c".
" Every form of a diagnostic is read; with --no_brief_diagnostics the column comes from the caret line.
if exists('current_compiler')
  finish
endif
let current_compiler = 'rvparse'

if exists(':CompilerSet') != 2
  command -nargs=* CompilerSet setlocal <args>
endif
CompilerSet makeprg=rvparse

let s:forms = []
for s:place in ['"%f"\, line %l (col. %c): ', '"%f"\, line %l: ']
  for s:number in [' #%n-D: %m', ' #%n: %m', ': %m']
    for s:severity in ['fatal error', 'command-line error', 'internal error', 'error']
      call add(s:forms, '%E' . s:place . s:severity . s:number)
    endfor
    call add(s:forms, '%W' . s:place . 'warning' . s:number)
    call add(s:forms, '%I' . s:place . 'remark' . s:number)
  endfor
endfor
" Without a place.
for s:number in [' #%n-D: %m', ' #%n: %m', ': %m']
  for s:severity in ['Fatal error', 'Command-line error', 'Internal error', 'Error', 'At end of source: error']
    call add(s:forms, '%E' . s:severity . s:number)
  endfor
  call add(s:forms, '%WWarning' . s:number)
  call add(s:forms, '%IRemark' . s:number)
endfor
" The caret, the rest of a broken line, the source line; nothing else is of interest.
call extend(s:forms, ['%Z  %p^', '%C          %m', '%-C  %.%#', '%-G%.%#'])
let &l:errorformat = join(s:forms, ',')
unlet s:forms s:place s:number s:severity
