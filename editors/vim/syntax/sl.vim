" Vim syntax file of the RenderMan Shading Language.
" Made by the build target `reference` from the compiler's tables: do not edit.

if exists("b:current_syntax")
  finish
endif

syn case match
syn keyword slShader light surface volume displacement imager
syn keyword slDetail varying uniform extern output
syn keyword slType void float string normal vector point color matrix
syn keyword slStatement return if else while for solar illuminate illuminance break continue
syn keyword slTexture texture environment shadow
syn keyword slFunction radians degrees sin asin cos acos tan atan pow exp sqrt inversesqrt log mod abs sign min max clamp mix floor ceil round step smoothstep filterstep spline noise pnoise cellnoise random Du Dv Deriv area calculatenormal length normalize distance ptlined faceforward reflect refract fresnel rotate transform vtransform ntransform depth xcomp ycomp zcomp setxcomp setycomp setzcomp comp setcomp ctransform inverse determinant translate scale pack unpack ambient diffuse specular specularstd specularbrdf phong trace transmission occlusion indirectdiffuse isshadowray isindirectray raylevel printf format concat match attribute option rendererinfo textureinfo atmosphere lightsource incident opposite shadername
syn keyword slPredefined Cs Os P dPdu dPdv N Ng u v du dv s t L Cl Ol E I ncomps time Ci Oi Ps alpha
syn keyword slConstant PI
syn match slNumber "\v<\d+(\.\d*)?([eE][-+]?\d+)?"
syn match slNumber "\v\.\d+([eE][-+]?\d+)?"
syn match slEscape contained "\\."
syn region slString start=+"+ skip=+\\.+ end=+"+ contains=slEscape
syn keyword slTodo contained TODO FIXME XXX
syn region slComment start="/\*" end="\*/" contains=slTodo
syn match slComment "//.*$" contains=slTodo
syn region slPreprocessor start="^\s*#" skip="\\$" end="$" contains=slComment,slString keepend

hi def link slShader Structure
hi def link slDetail StorageClass
hi def link slType Type
hi def link slStatement Statement
hi def link slTexture Function
hi def link slFunction Function
hi def link slPredefined Identifier
hi def link slConstant Constant
hi def link slNumber Number
hi def link slString String
hi def link slEscape SpecialChar
hi def link slComment Comment
hi def link slTodo Todo
hi def link slPreprocessor PreProc

let b:current_syntax = "sl"
