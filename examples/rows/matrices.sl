/* Matrices: their elements, their products, and the ways to create one. */
#include "card.h"

surface matrices(matrix given = matrix(2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 1);
                 output varying float shown = 0)
{
    matrix moved = translate(given, point(1, 2, 3));
    matrix turned = rotate(matrix 1, PI / 2, vector(0, 0, 1));
    matrix sized = scale(given, point(1, 2, t));
    matrix changed = given;

    setcomp(changed, 3, 1, 5);

    CARD(12);
    SHOW(comp(given, 1, 1));
    SHOW(comp(moved, 3, 2));
    SHOW(comp(turned, 0, 1));
    SHOW(comp(sized, 2, 2));
    SHOW(comp(changed, 3, 1));
    SHOW(determinant(given));
    SHOW(comp(inverse(given), 0, 0));
    SHOW(comp(given * sized, 1, 1));
    SHOW(comp(given / given, 2, 2));
    SHOW(comp(1 / given, 1, 1));
    SHOW(given == 2 ? 1 : 0);
    SHOW(changed != given ? 1 : 0);

    Oi = 1;
    Ci = shown;
}
