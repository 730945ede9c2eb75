" S-records.
if exists('b:current_syntax')
  finish
endif

" Readers of the format ignore other lines.
syntax match kvrSrecIgnored /^\s*[^[:blank:]S].*/
syntax match kvrSrecError /\S.*/ contained
syntax match kvrSrecError /^\s*s\x.*/
syntax match kvrSrecError /^\s*\zsS.*/
" The length of the address depends on the type.
syntax match kvrSrecHeader /^\s*\zsS0/ nextgroup=kvrSrecCount2,kvrSrecError
syntax match kvrSrecData /^\s*\zsS1/ nextgroup=kvrSrecCount2,kvrSrecError
syntax match kvrSrecData /^\s*\zsS2/ nextgroup=kvrSrecCount3,kvrSrecError
syntax match kvrSrecData /^\s*\zsS3/ nextgroup=kvrSrecCount4,kvrSrecError
syntax match kvrSrecRecords /^\s*\zsS5/ nextgroup=kvrSrecCount2,kvrSrecError
syntax match kvrSrecRecords /^\s*\zsS6/ nextgroup=kvrSrecCount3,kvrSrecError
syntax match kvrSrecEnd /^\s*\zsS7/ nextgroup=kvrSrecCount4,kvrSrecError
syntax match kvrSrecEnd /^\s*\zsS8/ nextgroup=kvrSrecCount3,kvrSrecError
syntax match kvrSrecEnd /^\s*\zsS9/ nextgroup=kvrSrecCount2,kvrSrecError
syntax match kvrSrecCount2 /\x\x/ contained nextgroup=kvrSrecAddress2,kvrSrecError
syntax match kvrSrecCount3 /\x\x/ contained nextgroup=kvrSrecAddress3,kvrSrecError
syntax match kvrSrecCount4 /\x\x/ contained nextgroup=kvrSrecAddress4,kvrSrecError
syntax match kvrSrecAddress2 /\x\{4}/ contained nextgroup=kvrSrecWord,kvrSrecChecksum,kvrSrecError
syntax match kvrSrecAddress3 /\x\{6}/ contained nextgroup=kvrSrecWord,kvrSrecChecksum,kvrSrecError
syntax match kvrSrecAddress4 /\x\{8}/ contained nextgroup=kvrSrecWord,kvrSrecChecksum,kvrSrecError
syntax match kvrSrecWord /\%(\x\x\)\+\ze\x\x\s*$/ contained nextgroup=kvrSrecChecksum
syntax match kvrSrecChecksum /\x\x\ze\s*$/ contained

highlight default link kvrSrecIgnored Comment
highlight default link kvrSrecError Error
highlight default link kvrSrecHeader Comment
highlight default link kvrSrecData Type
highlight default link kvrSrecRecords Keyword
highlight default link kvrSrecEnd Statement
highlight default link kvrSrecCount2 Constant
highlight default link kvrSrecCount3 Constant
highlight default link kvrSrecCount4 Constant
highlight default link kvrSrecAddress2 Label
highlight default link kvrSrecAddress3 Label
highlight default link kvrSrecAddress4 Label
highlight default link kvrSrecWord Number
highlight default link kvrSrecChecksum Special

let b:current_syntax = 'kvr-srec'
