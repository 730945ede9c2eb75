" :make puts the diagnostics of the tool into the quickfix list, with line and column.
function! s:entries() abort
  return map(getqflist(), '[bufname(v:val.bufnr), v:val.lnum, v:val.col, v:val.type, v:val.text]')
endfunction

call writefile([
      \ '-- Words of 8 bits', 'WIDTH=8;', 'DEPTH=8;', 'CONTENT BEGIN',
      \ '0 : 1FF;', '1 : 12 3G;', '3 : 5; 4 : 6;', 'END;', 'the rest'], 'careless.mif')
edit careless.mif
silent make!
call assert_equal([
      \ ['careless.mif', 5, 5, 'E', "value 1FF needs 9 bits, the words have 8\nneeds WIDTH 9"],
      \ ['careless.mif', 6, 8, 'E', "'G' in 3G is not a valid HEX digit"],
      \ ['careless.mif', 7, 8, 'E',
      \  "'4' begins a statement on the line of another\n"
      \  . 'the library kvr reads it as more values; give it a line of its own'],
      \ ['careless.mif', 9, 1, 'W', "'the rest' follows END\nmake it a comment"],
      \ ], s:entries())

" A diagnostic of the whole file has no line.
call writefile(['@10 00 02'], 'far from.mem')
edit far\ from.mem
silent make!
call assert_equal([['far from.mem', 0, 0, 'W', '16 of 18 words are never set, the first at address 0']], s:entries())

" The buffer or the command provides the options that the file leaves open.
call writefile([':0400100012345678D9', ':00000001FF'], 'record.hex')
edit record.hex
silent make! --width 32
call assert_equal(['record.hex', 1, 18, 'E', 'checksum is D9, the record adds up to D8'], s:entries()[0])
let b:kvrmem_options = '--width 32'
compiler kvrmem
call assert_match('check --width 32 \$\* %:S$', &makeprg)
silent make!
call assert_equal(['record.hex', 1, 18, 'E'], s:entries()[0][0:3])
let g:kvrmem_options = '--width 16 --strict'
edit other.mif
call assert_match('check --width 16 --strict \$\* %:S$', &makeprg)
unlet g:kvrmem_options

" A file without faults empties the list.
call writefile(['00 01 02 03'], 'whole.mem')
edit whole.mem
silent make!
call assert_equal([], s:entries())

source <sfile>:h/finish.vim
