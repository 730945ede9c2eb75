" :make checks the file of the buffer. An entry contains the line, the column and the hint of a diagnostic.
if exists('current_compiler')
  finish
endif
let current_compiler = 'kvrmem'

if exists(':CompilerSet') != 2
  command -nargs=* CompilerSet setlocal <args>
endif

execute 'CompilerSet makeprg=' . escape(kvrmem#check_command(), " \\|\"\t")
CompilerSet errorformat=%E%f:%l:%c:\ error%[%^:]%#:\ %m,
      \%W%f:%l:%c:\ warning:\ %m,
      \%I%f:%l:%c:\ note:\ %m,
      \%E%f:\ error%[%^:]%#:\ %m,
      \%W%f:\ warning:\ %m,
      \%I%f:\ note:\ %m,
      \%C\ \ hint:\ %m,
      \%-C\ %.%#,
      \%-G%.%#
