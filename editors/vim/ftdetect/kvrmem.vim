" Memory initialization files. The extension determines the possible languages of a file, its contents select one: see
" :help kvrmem-filetypes. "let g:loaded_kvrmem = 1" in a vimrc disables this.
if exists('g:loaded_kvrmem')
  finish
endif

autocmd BufNewFile,BufRead *.mif\c,*.hex\c,*.ihex\c,*.ihx\c,*.rif\c,*.mem\c,*.vmem\c,*.dat\c,*.txt\c,*.coe\c
      \ call kvrmem#detect()
autocmd BufNewFile,BufRead *.srec\c,*.s19\c,*.s28\c,*.s37\c,*.mot\c
      \ call kvrmem#detect()
" Logisim files have no extension of their own.
autocmd BufRead * if getline(1) =~# '^v[23]\.0 ' | call kvrmem#detect() | endif
