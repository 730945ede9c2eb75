" MEM with header: settings up to "#Data", then rows of words.
if exists('b:current_syntax')
  finish
endif
syntax case ignore

syntax match kvrMemheaderError /\S\+/
syntax match kvrMemheaderWord /\<[0-9A-F]\+\>/
syntax match kvrMemheaderAddress /^\s*\x\+\ze\s*:/ nextgroup=kvrMemheaderDelimiter skipwhite
syntax match kvrMemheaderDelimiter /:/ contained
syntax match kvrMemheaderSetting /^\s*#\%(Format\|Depth\|Width\|AddrRadix\|DataRadix\)\ze\s*=/
      \ nextgroup=kvrMemheaderEquals skipwhite
syntax match kvrMemheaderEquals /=/ contained nextgroup=kvrMemheaderLayout,kvrMemheaderSize skipwhite
syntax match kvrMemheaderLayout /\<\%(Bin\|Hex\|AddrHex\)\>/ contained
syntax match kvrMemheaderSize /\<\d\+\>/ contained
syntax match kvrMemheaderFrame /^\s*#Data\s*$/

highlight default link kvrMemheaderError Error
highlight default link kvrMemheaderWord Number
highlight default link kvrMemheaderAddress Label
highlight default link kvrMemheaderDelimiter Delimiter
highlight default link kvrMemheaderEquals Delimiter
highlight default link kvrMemheaderSetting Keyword
highlight default link kvrMemheaderLayout Type
highlight default link kvrMemheaderSize Constant
highlight default link kvrMemheaderFrame Statement

let b:current_syntax = 'kvr-memheader'
