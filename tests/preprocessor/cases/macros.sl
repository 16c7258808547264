#define f(a) a*g
#define g(a) f(a)
f(2)(9)
#define AA BB
#define BB AA
AA BB
#define NIL(xxx) xxx
#define G_0(arg) NIL(G_1)(arg)
#define G_1(arg) NIL(arg)
G_0(42)
#define EMPTY
#define LPAREN (
#define RPAREN )
#define F(x, y) x + y
#define ELLIP_FUNC(...) __VA_ARGS__
ELLIP_FUNC(F, LPAREN, 'a', 'b', RPAREN);
#define foo() bar
foo
()
foo EMPTY ()
+EMPTY+ -EMPTY- x EMPTY y
#define ff(x) x x
ff (ff) (1)
#define e(fmt, args...) p(fmt, ##args)
#define e2(fmt, ...) p(fmt, ## __VA_ARGS__)
#define e3(...) p(a, ##__VA_ARGS__)
e("a") e("a",) e("a", b) e("a", b, c) e2("x") e2("x",1,EMPTY 2) e3() e3(EMPTY) e3(b) e2("a", e2("b", c)) e2(1, EMPTY, e2)
#define q(x) #x
q( a   b /* c */ d "e\n\"f" 'g"' '\'' ) q() q(\) q(a\) q("\\" \ )
q(
 a
 b)
#define cat(a,b) a##b
cat(1,e) + cat(.,5) cat(<,<) cat(-,>) cat(+,) cat(x,cat)(y,z)
#define mul(a,b) a ## b ## a [ a b ]
mul( p q , r s )
#define H # x ## y
H
#define nested(x) cat(x,cat(x,x))
nested(k)
__LINE__ __FILE__ __INCLUDE_LEVEL__ __COUNTER__ __COUNTER__ __STDC__ __STDC_VERSION__ __BASE_FILE__
#define line() __LINE__
line(

) __LINE__
cat(__LINE__,1) q(__LINE__)
#define kk(x) k x
kk(
#define inner 7
inner
#undef inner
inner
)
#define a$b dollar
a$b $ a$ @ ` \ "x
it's a lone 'apostrophe and more f(3) /* no comment
here */ 
'unfinished
