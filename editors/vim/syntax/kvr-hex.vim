" Intel HEX with word or byte addresses: the records look the same.
if exists('b:current_syntax')
  finish
endif

" Readers of the format ignore other lines.
syntax match kvrHexIgnored /^\s*[^:[:blank:]].*/
syntax match kvrHexMark /^\s*\zs:/ nextgroup=kvrHexLength,kvrHexError skipwhite
syntax match kvrHexError /\S.*/ contained
syntax match kvrHexLength /\x\x/ contained nextgroup=kvrHexAddress,kvrHexError skipwhite
syntax match kvrHexAddress /\x\{4}/ contained
      \ nextgroup=kvrHexData,kvrHexEnd,kvrHexOffset,kvrHexStart,kvrHexError skipwhite
syntax match kvrHexData /00/ contained nextgroup=kvrHexWord,kvrHexChecksum,kvrHexError skipwhite
syntax match kvrHexEnd /01/ contained nextgroup=kvrHexWord,kvrHexChecksum,kvrHexError skipwhite
syntax match kvrHexOffset /0[24]/ contained nextgroup=kvrHexPage,kvrHexError skipwhite
syntax match kvrHexStart /0[35]/ contained nextgroup=kvrHexPage,kvrHexError skipwhite
syntax match kvrHexWord /\x[[:xdigit:][:blank:]]*\ze\x\s*\x\s*$/ contained
      \ nextgroup=kvrHexChecksum,kvrHexError skipwhite
syntax match kvrHexPage /\x[[:xdigit:][:blank:]]*\ze\x\s*\x\s*$/ contained
      \ nextgroup=kvrHexChecksum,kvrHexError skipwhite
syntax match kvrHexChecksum /\x\s*\x\ze\s*$/ contained

highlight default link kvrHexIgnored Comment
highlight default link kvrHexMark Delimiter
highlight default link kvrHexError Error
highlight default link kvrHexLength Constant
highlight default link kvrHexAddress Label
highlight default link kvrHexData Type
highlight default link kvrHexEnd Statement
highlight default link kvrHexOffset Keyword
highlight default link kvrHexStart Keyword
highlight default link kvrHexPage Label
highlight default link kvrHexWord Number
highlight default link kvrHexChecksum Special

let b:current_syntax = 'kvr-hex'
