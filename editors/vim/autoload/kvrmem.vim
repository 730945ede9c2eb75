" The functions that the files of this folder share: they determine the language of a file and set up its buffer.

" The possible languages of each extension. The first one that matches the contents counts.
let s:languages = {
      \ 'mif': ['kvr-mif'],
      \ 'hex': ['kvr-hex', 'kvr-readmem'],
      \ 'ihex': ['kvr-hex'],
      \ 'ihx': ['kvr-hex'],
      \ 'rif': ['kvr-rif'],
      \ 'mem': ['kvr-readmem', 'kvr-memheader'],
      \ 'vmem': ['kvr-readmem'],
      \ 'dat': ['kvr-readmem'],
      \ 'txt': ['kvr-titxt', 'kvr-readmem'],
      \ 'coe': ['kvr-coe'],
      \ 'srec': ['kvr-srec'],
      \ 's19': ['kvr-srec'],
      \ 's28': ['kvr-srec'],
      \ 's37': ['kvr-srec'],
      \ 'mot': ['kvr-srec'],
      \ }

" Extensions that many programs use. A new file gets no language, nor does a list of words without an address or a
" comment.
let s:open_extensions = ['dat', 'txt']

" Lines that occur only in files of the language.
let s:signs = {
      \ 'kvr-mif': '\c^\s*\%(\%(WIDTH\|DEPTH\|ADDRESS_RADIX\|DATA_RADIX\)\s*=\|CONTENT\%(\s\+BEGIN\)\?\s*$'
      \          . '\|\%(\x\+\|\[\s*\x\+\s*\.\.\s*\x\+\s*\]\)\s*:\s*[-0-9A-FX][-0-9A-FX \t]*;\)',
      \ 'kvr-hex': '^\s*:\s*\x\x\s*\x\{4}\s*0[0-5]',
      \ 'kvr-srec': '^\s*S[0-35-9]\x\{6,}\s*$',
      \ 'kvr-coe': '\c^\s*memory_initialization_\%(radix\|vector\)\s*=',
      \ 'kvr-memheader': '\c^#Format\s*=',
      \ }

" The possible forms of each word of a list.
let s:words = {
      \ 'kvr-rif': '^\%(@\x\+\|[[:xdigit:]xX]\+\)$',
      \ 'kvr-readmem': '^\%(@\x\+\|[[:xdigit:]xXzZ][[:xdigit:]xXzZ_]*\)$',
      \ 'kvr-titxt': '^\%(@\x\+\|\x\x\|[qQ]\)$',
      \ }

let s:readmem_comment = '/\*\_.\{-}\%(\*/\|\%$\)\|//[^\n]*'

" The lines that are examined: the first ones, and the last one, which contains the end mark of a TI-TXT file.
let s:head = 200

function! s:is_list(language, extension, lines) abort
  let text = join(a:lines, "\n")
  let rest = a:language ==# 'kvr-readmem' ? substitute(text, s:readmem_comment, ' ', 'g') : text
  let words = split(rest)
  if empty(words) || match(words, '^\%(' . s:words[a:language] . '\)\@!') >= 0
    return 0
  endif
  if a:language ==# 'kvr-titxt'
    return words[0] =~# '^@' && words[-1] ==? 'q'
  endif
  return index(s:open_extensions, a:extension) < 0 || rest !=# text || match(words, '^@') >= 0
endfunction

" The language of a file according to its extension and some of its lines; '' for a file of other software.
function! kvrmem#language(extension, lines) abort
  if get(a:lines, 0, '') =~# '^v2\.0 raw\|^v3\.0 hex '
    return 'kvr-logisim'
  endif
  let extension = tolower(a:extension)
  let languages = get(s:languages, extension, [])
  if match(a:lines, '\S') < 0
    return index(s:open_extensions, extension) < 0 ? get(languages, 0, '') : ''
  endif
  for language in languages
    if has_key(s:signs, language)
          \ ? match(a:lines, s:signs[language]) >= 0
          \ : s:is_list(language, extension, a:lines)
      return language
    endif
  endfor
  return ''
endfunction

" Sets the filetype of the buffer that is being read. A file of other software keeps the detected filetype.
function! kvrmem#detect() abort
  let lines = getline(1, s:head)
  if line('$') > s:head
    call add(lines, getline(prevnonblank('$')))
  endif
  let language = kvrmem#language(expand('<amatch>:e'), lines)
  if language !=# ''
    let &filetype = language
  endif
endfunction

" The common part of every ftplugin. MARK begins a comment up to the end of the line; '' if the language has none.
function! kvrmem#set_up(mark) abort
  let &l:commentstring = a:mark ==# '' ? '' : a:mark . ' %s'
  let &l:comments = a:mark ==# '' ? '' : ':' . a:mark
  setlocal formatoptions-=t
  compiler kvrmem
  let b:undo_ftplugin = 'setlocal commentstring< comments< formatoptions< makeprg< errorformat<'
        \ . ' | unlet! b:current_compiler'
endfunction

" The command of the compiler, for 'makeprg'. b:kvrmem_options or g:kvrmem_options state what the file leaves open.
function! kvrmem#check_command() abort
  let options = get(b:, 'kvrmem_options', get(g:, 'kvrmem_options', ''))
  return join(filter([shellescape(get(g:, 'kvrmem_path', 'kvrmem')), 'check', options, '$*', '%:S'], 'v:val !=# ""'))
endfunction
