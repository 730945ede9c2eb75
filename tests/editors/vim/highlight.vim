" Each file of the folder highlight contains lines in the language of its name. After a line, "~" marks the columns of a
" syntax group, followed by its name; "none" means no group.
let s:mark = '^\(\s*\)\(\~\+\)\s\+\(\w\+\)$'
let s:checked = 0
for s:file in glob($KVR_SOURCE . '/tests/editors/vim/highlight/*', 0, 1)
  enew!
  let s:expected = []
  for s:line in readfile(s:file)
    let s:found = matchlist(s:line, s:mark)
    if empty(s:found)
      call append(line('$'), s:line)
    else
      call add(s:expected, [line('$') - 1, strlen(s:found[1]), strlen(s:found[2]), s:found[3]])
    endif
  endfor
  1delete _
  let &filetype = fnamemodify(s:file, ':t')
  call assert_true(exists('b:current_syntax'), s:file)
  for [s:row, s:column, s:length, s:group] in s:expected
    for s:at in range(s:column + 1, s:column + s:length)
      let s:name = synIDattr(synID(s:row, s:at, 1), 'name')
      let s:place = fnamemodify(s:file, ':t') . ': "' . getline(s:row) . '" column ' . s:at
      call assert_equal(s:group, s:name ==# '' ? 'none' : s:name, s:place)
      let s:checked += 1
    endfor
  endfor
endfor
call assert_true(s:checked > 300, s:checked . ' columns were looked at')

" Each group is linked to one that every color scheme defines. A statement of a COE consists of other groups.
for s:name in filter(getcompletion('kvr', 'highlight'), 'v:val !=# "kvrCoeStatement"')
  call assert_notequal(hlID(s:name), synIDtrans(hlID(s:name)), s:name)
endfor

source <sfile>:h/finish.vim
