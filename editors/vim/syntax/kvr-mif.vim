" MIF: settings, and words at addresses and ranges.
if exists('b:current_syntax')
  finish
endif
syntax case ignore
syntax sync minlines=200

syntax match kvrMifDelimiter /[:;,=]/
syntax match kvrMifWord /-\?\<[0-9A-FX]\+\>/ contains=kvrMifDontCare
syntax match kvrMifDontCare /X/ contained
syntax match kvrMifAddress /\<\x\+\>\ze\s*:/
syntax match kvrMifRange /\[\s*\x\+\s*\.\.\s*\x\+\s*\]/ contains=kvrMifRangeEnd
syntax match kvrMifRangeEnd /\x\+/ contained

syntax match kvrMifSetting /\<\%(WIDTH\|DEPTH\)\>\ze\s*=/ nextgroup=kvrMifSizeIs skipwhite
syntax match kvrMifSizeIs /=/ contained nextgroup=kvrMifSize skipwhite
syntax match kvrMifSize /\d\+\>/ contained
syntax match kvrMifSetting /\<\%(ADDRESS_RADIX\|DATA_RADIX\)\>\ze\s*=/ nextgroup=kvrMifRadixIs skipwhite
syntax match kvrMifRadixIs /=/ contained nextgroup=kvrMifRadix skipwhite
syntax keyword kvrMifRadix contained BIN BINARY OCT OCTAL DEC DECIMAL UNS UNSIGNED UNSIGNED_DEC HEX HEXADECIMAL
syntax match kvrMifFrame /\<CONTENT\>/
syntax match kvrMifFrame /\<BEGIN\>/
syntax match kvrMifFrame /\<END\>/

syntax match kvrMifComment /--.*/ contains=@Spell
" A "%" comment ends at a "%" in its line, or with the line. It reaches to a "%" in a later line only if that ends the
" line or a statement follows.
syntax match kvrMifComment /%[^%]*\%($\|%\)/ contains=@Spell
syntax match kvrMifComment /%[^%\n]*\n\_[^%]*%\ze\s*\%($\|;\|--\|\[\|\x\+\s*:\)/ contains=@Spell
syntax match kvrMifComment /%[^%\n]*\n\_[^%]*%\ze\s*\%(WIDTH\|DEPTH\|ADDRESS_RADIX\|DATA_RADIX\|CONTENT\|END\)\>/
      \ contains=@Spell
" Begins a comment in other formats.
syntax match kvrMifError /\/\/.*\|#.*/

highlight default link kvrMifDelimiter Delimiter
highlight default link kvrMifWord Number
highlight default link kvrMifDontCare Special
highlight default link kvrMifAddress Label
highlight default link kvrMifRangeEnd Label
highlight default link kvrMifRange Delimiter
highlight default link kvrMifSetting Keyword
highlight default link kvrMifSizeIs Delimiter
highlight default link kvrMifRadixIs Delimiter
highlight default link kvrMifSize Constant
highlight default link kvrMifRadix Type
highlight default link kvrMifFrame Statement
highlight default link kvrMifComment Comment
highlight default link kvrMifError Error

let b:current_syntax = 'kvr-mif'
