" RIF: rows of hexadecimal words; each address has its own line. There are no comments.
if exists('b:current_syntax')
  finish
endif
syntax case ignore

syntax match kvrRifError /\S\+/
syntax match kvrRifWord /\%(^\|\s\)\@1<=[0-9A-FX]\+\%(\s\|$\)\@=/ contains=kvrRifDontCare
syntax match kvrRifDontCare /X/ contained
syntax match kvrRifError /^.*@.*$/
syntax match kvrRifAddress /^\s*@\x\+\s*$/
syntax match kvrRifError /\%(\/\/\|#\|--\).*/

highlight default link kvrRifError Error
highlight default link kvrRifWord Number
highlight default link kvrRifDontCare Special
highlight default link kvrRifAddress Label

let b:current_syntax = 'kvr-rif'
