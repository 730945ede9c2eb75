if exists('b:did_ftplugin')
  finish
endif
let b:did_ftplugin = 1

call kvrmem#set_up('--')
