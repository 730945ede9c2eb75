" TI-TXT: bytes at addresses, up to a "q".
if exists('b:current_syntax')
  finish
endif
syntax case ignore

syntax match kvrTitxtError /\S\+/
syntax match kvrTitxtWord /\<\x\x\>/
syntax match kvrTitxtAddress /@\x\+\>/
syntax match kvrTitxtEnd /\<q\>/

highlight default link kvrTitxtError Error
highlight default link kvrTitxtWord Number
highlight default link kvrTitxtAddress Label
highlight default link kvrTitxtEnd Statement

let b:current_syntax = 'kvr-titxt'
