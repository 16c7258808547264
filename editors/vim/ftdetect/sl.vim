autocmd BufRead,BufNewFile *.sl set filetype=sl
