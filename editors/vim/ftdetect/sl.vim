autocmd BufRead,BufNewFile *.sl setfiletype sl
