a \
 b c
def\
ine x\
   y
#def\
ine ONE \
 1 + \
 2
ONE ONE\

"str\
ing" x
// comment \
continued
after /* a
b */ x /* c
*/
#define f(x,y) [x|y]
f(1,
2) c
f(1,
2);c e
q f(1,
2
) r f(3,
4
)s t
last
