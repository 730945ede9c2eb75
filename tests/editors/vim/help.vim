" The help has tags, and each name of this plugin between bars is a tag.
call mkdir('help/doc', 'p')
call writefile(readfile($KVR_SOURCE . '/editors/vim/doc/kvrmem.txt'), 'help/doc/kvrmem.txt')
helptags help/doc
set runtimepath^=help
let s:tags = map(readfile('help/doc/tags'), 'split(v:val, "\t")[0]')
call assert_equal(['b:kvrmem_options', 'g:kvrmem_options', 'g:kvrmem_path', 'g:loaded_kvrmem'],
      \ filter(copy(s:tags), 'v:val =~# ":"'))
for s:line in readfile('help/doc/kvrmem.txt')
  let s:link = matchstr(s:line, '|\zskvrmem-\k*\%(-\k*\)*\ze|')
  call assert_true(s:link ==# '' || index(s:tags, s:link) >= 0, s:link)
endfor
help kvrmem-filetypes
call assert_equal('kvrmem.txt', expand('%:t'))

" The table in the help lists the recognized languages, and each language has its files.
let s:languages = filter(map(getline(1, '$'), 'matchstr(v:val, "^kvr-\\k*")'), 'v:val !=# ""')
call assert_equal(9, len(s:languages))
for s:kind in ['syntax', 'ftplugin']
  let s:files = glob($KVR_SOURCE . '/editors/vim/' . s:kind . '/*.vim', 0, 1)
  call assert_equal(sort(copy(s:languages)), sort(map(s:files, 'fnamemodify(v:val, ":t:r")')))
endfor

source <sfile>:h/finish.vim
