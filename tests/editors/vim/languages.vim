" Each file gets the language of its contents. A file of other software keeps the filetype that others have set, or
" none.
let s:folder = $KVR_SOURCE . '/tests/editors/languages/'
for s:line in readfile(s:folder . 'expected')
  let [s:file, s:language] = split(s:line)
  execute 'edit' fnameescape(s:folder . s:file)
  if s:language ==# 'none'
    call assert_notmatch('^kvr-', &filetype, s:file)
    continue
  endif
  call assert_equal(s:language, &filetype, s:file)
  call assert_equal(s:language, get(b:, 'current_syntax', ''), s:file)
  call assert_equal('kvrmem', get(b:, 'current_compiler', ''), s:file)
endfor

" A new file has only its extension.
let s:new = {'new.mif': 'kvr-mif', 'new.MIF': 'kvr-mif', 'new.mem': 'kvr-readmem', 'new.hex': 'kvr-hex'}
for [s:file, s:language] in items(s:new)
  execute 'edit' s:file
  call assert_equal(s:language, &filetype, s:file)
endfor
edit new.txt
call assert_notmatch('^kvr-', &filetype)

" The settings of an ftplugin end with its filetype.
edit new.mif
call assert_equal('-- %s', &commentstring)
set filetype=text
call assert_notequal('-- %s', &commentstring)
call assert_notmatch('kvrmem', &makeprg)
call assert_false(exists('b:current_compiler'))

source <sfile>:h/finish.vim
