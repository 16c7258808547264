" `:compiler shaderqx`, then `:make`: compiles the current shader and finds the reports.
if exists("current_compiler")
  finish
endif
let current_compiler = "shaderqx"

CompilerSet makeprg=shaderqx\ %:S
" A report is a line with place, kind and text, followed by the source line and a caret. All lines
" without a place are ignored, such as warnings about the environment and the closing line.
CompilerSet errorformat=%f:%l:%c:\ %tRROR:\ %m,%f:%l:%c:\ %tARNING:\ %m
CompilerSet errorformat+=%f:%l:\ %tRROR:\ %m,%f:%l:\ %tARNING:\ %m,%-G%.%#
