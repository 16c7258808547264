" `:compiler shaderqx`, then `:make`: compiles the current shader and finds the reports.
if exists("current_compiler")
  finish
endif
let current_compiler = "shaderqx"

CompilerSet makeprg=shaderqx\ %:S
" A report: place, kind and text, with the source line and a caret after it; then warnings about the
" environment and the closing line, which have no place.
CompilerSet errorformat=%f:%l:\ %tRROR:\ %m,%f:%l:\ %tARNING:\ %m,%-G%.%#
