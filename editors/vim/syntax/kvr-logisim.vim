" Memory files of Logisim: the first line determines the form of the rows.
if exists('b:current_syntax')
  finish
endif

syntax match kvrLogisimError /\S\+/
syntax match kvrLogisimWord /\<\x\+\>/
syntax match kvrLogisimRun /\<\d\+\*/ contains=kvrLogisimDelimiter nextgroup=kvrLogisimWord
syntax match kvrLogisimAddress /^\s*\x\+:/ contains=kvrLogisimDelimiter
syntax match kvrLogisimDelimiter /[*:]/ contained
syntax match kvrLogisimComment /#.*/ contains=@Spell
syntax match kvrLogisimError /\%1l.*/
syntax match kvrLogisimHeader /\%1l^v2\.0 raw\s*$/
syntax match kvrLogisimHeader /\%1l^v3\.0 hex words \%(addressed\|plain\)\s*$/
syntax match kvrLogisimHeader /\%1l^v3\.0 hex bytes \%(addressed\|plain\) \%(little\|big\)-endian\s*$/

highlight default link kvrLogisimError Error
highlight default link kvrLogisimWord Number
highlight default link kvrLogisimRun Repeat
highlight default link kvrLogisimAddress Label
highlight default link kvrLogisimDelimiter Delimiter
highlight default link kvrLogisimComment Comment
highlight default link kvrLogisimHeader Keyword

let b:current_syntax = 'kvr-logisim'
