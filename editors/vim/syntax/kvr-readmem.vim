" Lists of words for $readmemh and $readmemb.
if exists('b:current_syntax')
  finish
endif
syntax case ignore
syntax sync ccomment kvrReadmemComment

syntax match kvrReadmemError /[^[:blank:]\/,;]\+/
syntax match kvrReadmemError /[,;]/
syntax match kvrReadmemWord /\<[0-9A-FXZ_]\+\>/ contains=kvrReadmemDontCare,kvrReadmemSeparator
syntax match kvrReadmemDontCare /[XZ]/ contained
syntax match kvrReadmemSeparator /_/ contained
syntax match kvrReadmemAddress /@\x\+\%([^0-9A-Za-z_]\|$\)\@=/
syntax match kvrReadmemError /\%(#\|--\).*/
syntax match kvrReadmemComment /\/\/.*/ contains=@Spell
syntax region kvrReadmemComment start=/\/\*/ end=/\*\// contains=@Spell

highlight default link kvrReadmemError Error
highlight default link kvrReadmemWord Number
highlight default link kvrReadmemDontCare Special
highlight default link kvrReadmemSeparator Delimiter
highlight default link kvrReadmemAddress Label
highlight default link kvrReadmemComment Comment

let b:current_syntax = 'kvr-readmem'
