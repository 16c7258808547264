// Each group that is kept has its number.
#define A 1
#define B(x) x
#define D defined
#if A
1
#else
x
#endif
#if defined A && defined(B) && !defined C && D A
2
#endif
#if B(1) + 2 * 3 == 7 && 7 % 4 == 3 && (1 << 4) == 16 && (-16 >> 2) == -4 && ~0 == -1
3
#endif
#if -1 > 0u && 0x10 == 16 && 010 == 8 && 1L && 1ull && 'a' == 97 && '\n' == 10 && '\x41' == 'A' && '\101' == 65 && 'ab' == 24930
4
#endif
#if 0 && 1/0
#elif 1 || 1/0
5
#elif 1/0
bad
#endif
#if undefined
a
#elif (1 ? 2 : 3) == 2 && (0 ? 1/0 : 4) == 4
6
#elif garbage ( (
#endif
#ifdef A
# ifndef A
b
# elif 1
7
# endif
#else
#endif
#if 0
#foo bar
don't "unfinished
#if 1
#else

#endif
/* #endif */
#else
8
#endif
#if 18446744073709551615u == -1 && 9223372036854775807 + 0 > 0 && (2 || 3) == 1 && (6 & 3 | 8 ^ 1) == 11
9
#endif
#if (0x7fffffffffffffff + 0u) > 1 && -5 / 2 == -2 && -5 % 3 == -2 && 3 > 2 > 0 && 1 == 1 != 0 && -9223372036854775807-1 < 0 && (1u - 2) > 5 && 5 >= 5 && 4 <= 5 && !0 && +1
10
#endif
#if '\377' < 0 && '\xff' == -1 && 1 << 63 < 0 && 1u << 63 > 0 && 1 << 64 == 0 && -1 >> 70 == -1 && 8 >> 64 == 0 && 1 << -1 == 0 && 4 >> -1 == 8
11
#endif
# /* null */
#
#define /* c */ N /* d */ 5 /* e
 */
#if N == 5 /*
*/ && 1
12
#endif
#if 1 //\
garbage
13
#endif
/* before */ # /* in */ define X 14
X
#undef X
#undef NOTHING
X
#if defined X || defined \
 A
15
#endif
