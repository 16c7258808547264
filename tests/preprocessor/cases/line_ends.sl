dos
line \
 continued
#define A 1
A
