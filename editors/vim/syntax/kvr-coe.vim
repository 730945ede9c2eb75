" COE: a radix, and a list of words up to a ";". Outside of settings, a ";" begins a comment.
if exists('b:current_syntax')
  finish
endif
syntax case ignore
syntax sync fromstart

syntax match kvrCoeError /[^;[:blank:]]\+/
syntax match kvrCoeComment /;.*/ contains=@Spell
syntax region kvrCoeStatement matchgroup=kvrCoeSetting start=/\<memory_initialization_radix\>/
      \ matchgroup=kvrCoeDelimiter end=/;/ contains=kvrCoeFault,kvrCoeRadix,kvrCoeDelimiter
syntax region kvrCoeStatement matchgroup=kvrCoeSetting start=/\<memory_initialization_vector\>/
      \ matchgroup=kvrCoeDelimiter end=/;/ contains=kvrCoeFault,kvrCoeWord,kvrCoeDelimiter
syntax match kvrCoeFault /[^=,;[:blank:]]\+/ contained
syntax match kvrCoeRadix /\<\%(2\|10\|16\)\>/ contained
syntax match kvrCoeWord /\<\x\+\>/ contained
syntax match kvrCoeDelimiter /[=,]/ contained

highlight default link kvrCoeError Error
highlight default link kvrCoeFault Error
highlight default link kvrCoeComment Comment
highlight default link kvrCoeSetting Keyword
highlight default link kvrCoeRadix Type
highlight default link kvrCoeWord Number
highlight default link kvrCoeDelimiter Delimiter

let b:current_syntax = 'kvr-coe'
