/* Functions of points, vectors and normals. */
#include "card.h"

surface points(point other = point(1, 2, 3); output varying point shown = 0)
{
    normal Nn = normalize(N);
    vector In = normalize(I);
    point each = P;
    point any = P;
    float reflected = 0;
    float refracted = 0;
    float again = 0;
    vector R = 0;
    vector T = 0;

    setxcomp(each, 4);
    setycomp(each, 5);
    setzcomp(each, 6);
    setcomp(any, 2, 7);
    fresnel(In, Nn, 0.5, reflected, refracted);
    fresnel(In, Nn, 0.5, again, refracted, R, T);

    CARD(22);
    SHOW(each);
    SHOW(any);
    SHOW(point(xcomp(P), ycomp(N), zcomp(other)));
    SHOW(comp(other, 1));
    SHOW(length(other - point(1, 2, 0)));
    SHOW(distance(P, other));
    SHOW(ptlined(point(0, 0, 0), point(2, 0, 0), point(1, t, 0)));
    SHOW(depth(P));
    SHOW(point faceforward(Nn, -In));
    SHOW(point faceforward(Nn, In, vector(0, 0, 1)));
    SHOW(point reflect(In, Nn));
    SHOW(point refract(In, Nn, 0.5));
    SHOW(reflected);
    SHOW(again);
    SHOW(point R);
    SHOW(point T);
    SHOW(rotate(other, PI / 2, point(0, 0, 0), point(0, 0, 1)));
    SHOW(mix(P, other, t));
    SHOW(clamp(other, point(0, 0, 0), point(2, 1, 2)));
    SHOW(min(other, P, point(0, 3, 1)));
    SHOW(max(other, P));
    SHOW(point ((In ^ vector(1, 0, 0)) * (other . vector(0, 0, 1)) / 3));

    Oi = 1;
    Ci = color shown;
}
