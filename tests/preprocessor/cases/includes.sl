#include "guarded.h"
#include "guarded.h"
#define NAME "once.h"
#define Q <sub/deep.h>
#include NAME
#include NAME
after
#include Q
#define str(x) #x
#define xstr(x) str(x)
#include xstr(sub/deep.h)
#include <no_newline.h> trailing
end
#line 100
l
#line 200 "other.sl"
l __FILE__ __LINE__
#define L 7 "x.y"
#line L
l
# 50 "marker.h" 1
m
# 7 "x.y" 2
m

#pragma foo  bar L
#pragma annotation "q" 'x
p _Pragma("a \"b\" \\ c") q
#ident "hello"
tail


















far
