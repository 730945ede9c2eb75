" neovim starts the language server once, with its options, and attaches it to the files of its languages. A program
" that records its input replaces the server.
call writefile(['#!/bin/sh', 'echo "$*" >>arguments', 'exec cat >messages'], 'server')
call setfperm('server', 'rwx------')
lua require('kvrmem').setup({ path = vim.fn.getcwd() .. '/server', arguments = { '--width', '12' } })
call writefile(['WIDTH=8;', 'DEPTH=1;', 'CONTENT BEGIN', '0 : 1;', 'END;'], 'one.mif')
call writefile(['To do'], 'one.txt')
edit one.txt
sleep 100m
call assert_false(filereadable('arguments'))
edit one.mif
for s:wait in range(100)
  if filereadable('messages') && getfsize('messages') > 0
    break
  endif
  sleep 50m
endfor
edit two.mif
sleep 100m
call assert_equal(['lsp --width 12'], readfile('arguments'))
let s:message = join(readfile('messages'), "\n")
call assert_match('^Content-Length: \d\+', s:message)
call assert_match('"method":"initialize"', substitute(s:message, '[ \\]', '', 'g'))

source <sfile>:h/finish.vim
