" Memory initialization files. The extension says which languages a file may have, its contents which one it has:
" see :help kvrmem-filetypes. "let g:loaded_kvrmem = 1" in a vimrc switches this off.
if exists('g:loaded_kvrmem')
  finish
endif

autocmd BufNewFile,BufRead *.mif\c,*.hex\c,*.ihex\c,*.ihx\c,*.rif\c,*.mem\c,*.vmem\c,*.dat\c,*.txt\c,*.coe\c
      \ call kvrmem#detect()
autocmd BufNewFile,BufRead *.srec\c,*.s19\c,*.s28\c,*.s37\c,*.mot\c
      \ call kvrmem#detect()
" Files of Logisim have no extension of their own.
autocmd BufRead * if getline(1) =~# '^v[23]\.0 ' | call kvrmem#detect() | endif
