// The speed that vectorized code could reach: shaders as loops over strips of points whose triples
// are stored component by component on the stack, so that each inner loop can be vectorized. The
// results are the same as those of the shaders, bit by bit.

#include "QxColorSpaces.h"
#include "QxGeometry.h"
#include "QxMath.h"
#include "shading/loops.h"

namespace {

constexpr unsigned int k_strip = 64;

struct Triples {
    float x[k_strip];
    float y[k_strip];
    float z[k_strip];

    [[nodiscard]] QxVector3 At(unsigned int j) const { return {x[j], y[j], z[j]}; }
    void Set(unsigned int j, const QxVector3& value)
    {
        x[j] = value.x;
        y[j] = value.y;
        z[j] = value.z;
    }
};

void Load(Triples& triples, const QxVector3* values, unsigned int count)
{
    for (unsigned int j = 0; j < count; ++j)
        triples.Set(j, values[j]);
}

void Load(Triples& triples, const QxRGBColor* values, unsigned int count)
{
    for (unsigned int j = 0; j < count; ++j)
        triples.Set(j, {values[j].r, values[j].g, values[j].b});
}

void Store(QxRGBColor* values, const Triples& triples, unsigned int count)
{
    for (unsigned int j = 0; j < count; ++j)
        values[j] = {triples.x[j], triples.y[j], triples.z[j]};
}

/// Sums the diffuse light at the points of a strip, one light after the other.
void Diffuse(Triples& sum, const Triples& normals, const QxLightInput* lights, unsigned int count,
             unsigned int first, unsigned int points)
{
    for (unsigned int j = 0; j < k_strip; ++j)
        sum.Set(j, {0, 0, 0});
    for (unsigned int light = 0; light < count; ++light) {
        Triples directions;
        Triples colors;
        Load(directions, lights[light].L + first, points);
        Load(colors, lights[light].Cl + first, points);
        for (unsigned int j = 0; j < points; ++j) {
            const float cosine = QxDot(QxNormalize(directions.At(j)), normals.At(j));
            const float share = cosine > 0 ? cosine : 0;
            sum.x[j] += colors.x[j] * share;
            sum.y[j] += colors.y[j] * share;
            sum.z[j] += colors.z[j] * share;
        }
    }
}

template <class Work>
void ForStrips(unsigned int points, const Work& work)
{
    for (unsigned int first = 0; first < points; first += k_strip)
        work(first, points - first < k_strip ? points - first : k_strip);
}

}  // namespace

extern "C" void plain_arithmetic(const QxHiddenVariables& g, unsigned int points,
                                 const QxLightInput*, unsigned int)
{
    const float a = 0.7F;
    const float b = 0.31F;
    const float c = 1.9F;
    ForStrips(points, [&](unsigned int first, unsigned int count) {
        Triples results;
        const float* const s = g.s + first;
        const float* const t = g.t + first;
        for (unsigned int j = 0; j < count; ++j) {
            float x = s[j];
            float y = t[j];
            float z = s[j] * t[j] + a;
            float w = s[j] - t[j] * b;
            y = y * b + z * x - c * z;
            w = w * c + z * x - a * z;
            w = w * a + y * x - c * y;
            w = w * b + z * y - c * z;
            y = y * c + x * z - b * x;
            x = x * a + z * w - c * z;
            x = x * b + y * w - b * y;
            w = w * b + z * y - c * z;
            w = w * a + x * y - a * x;
            y = y * b + w * x - c * w;
            w = w * b + z * y - c * z;
            w = w * c + z * y - c * z;
            w = w * b + z * x - c * z;
            x = x * c + y * w - b * y;
            x = x * c + z * w - c * z;
            z = z * a + y * x - b * y;
            w = w * a + x * y - b * x;
            results.Set(j, {x * w, y * w, z * w});
        }
        Store(g.Ci + first, results, count);
        for (unsigned int j = 0; j < count; ++j)
            g.Oi[first + j] = {1, 1, 1};
    });
}

extern "C" void plain_matte(const QxHiddenVariables& g, unsigned int points,
                            const QxLightInput* lights, unsigned int lightCount)
{
    ForStrips(points, [&](unsigned int first, unsigned int count) {
        Triples normals;
        Triples incident;
        Triples geometric;
        Load(normals, g.N + first, count);
        Load(incident, g.I + first, count);
        Load(geometric, g.Ng + first, count);
        for (unsigned int j = 0; j < count; ++j)
            normals.Set(j,
                        QxFaceForward(QxNormalize(normals.At(j)), incident.At(j), geometric.At(j)));
        Triples sum;
        Diffuse(sum, normals, lights, lightCount, first, count);
        Triples colors;
        Triples opacity;
        Load(colors, g.Cs + first, count);
        Load(opacity, g.Os + first, count);
        const float ambient = 0.1F;
        for (unsigned int j = 0; j < count; ++j)
            colors.Set(j, {opacity.x[j] * colors.x[j] * (ambient + sum.x[j]),
                           opacity.y[j] * colors.y[j] * (ambient + sum.y[j]),
                           opacity.z[j] * colors.z[j] * (ambient + sum.z[j])});
        Store(g.Ci + first, colors, count);
        Store(g.Oi + first, opacity, count);
    });
}

extern "C" void plain_mandelbrot(const QxHiddenVariables& g, unsigned int points,
                                 const QxLightInput*, unsigned int)
{
    const float iterations = 50;
    ForStrips(points, [&](unsigned int first, unsigned int count) {
        float cx[k_strip] = {};
        float cy[k_strip] = {};
        float x[k_strip] = {};
        float y[k_strip] = {};
        float turns[k_strip] = {};
        int runs[k_strip] = {};
        for (unsigned int j = 0; j < count; ++j) {
            cx[j] = -0.5F + 3 * (g.s[first + j] - 0.5F);
            cy[j] = 3 * (g.t[first + j] - 0.5F);
            runs[j] = 1;
        }
        for (int any = 1, turn = 0; any != 0 && turn < 50; ++turn) {
            any = 0;
            for (unsigned int j = 0; j < k_strip; ++j) {
                const float square = x[j] * x[j] - y[j] * y[j] + cx[j];
                const float nextY = 2 * x[j] * y[j] + cy[j];
                const int on = runs[j] & (square * square + nextY * nextY > 4 ? 0 : 1);
                x[j] = square;
                y[j] = nextY;
                turns[j] += static_cast<float>(on);
                runs[j] = on;
                any |= on;
            }
        }
        for (unsigned int j = 0; j < count; ++j) {
            const QxRGBColor outside = QxColorToRgb({turns[j] / iterations, 0.8F, 1}, "hsv");
            g.Oi[first + j] = {1, 1, 1};
            g.Ci[first + j] = turns[j] >= iterations ? QxRGBColor{0, 0, 0} : outside;
        }
    });
}
