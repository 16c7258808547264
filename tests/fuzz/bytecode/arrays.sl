// Uniform and varying arrays of most types, with computed indices.
float Total(float list[]; float count)
{
    float sum = 0;
    float i;
    for (i = 0; i < count; i += 1)
        sum += list[i];
    return sum;
}

surface arrays(float weights[5] = {1, 2, 3, 4, 5}; varying float wave[3] = {0, 1, 0};
               output varying color tints[4] = {0, 1, 0, 1}; string names[2] = {"plastic", "matte"}; float at = 2)
{
    uniform float counts[7];
    varying point path[6];
    varying string words[2];
    uniform matrix frames[2] = {1, 2};
    uniform float i;

    for (i = 0; i < 7; i += 1) {
        counts[i] = weights[i / 2] + i;
        path[i - 1] = P * counts[at + i];
    }
    words[5 * u] = names[at - 1];
    words[u - v] = concat(words[0], names[0]);
    tints[3 * u] = color spline(v, tints);
    tints[at] = color (wave[2 * u], wave[1], spline("bezier", u, weights));
    frames[at - 1] = frames[0] / frames[1];
    Ci = tints[4 * v] * Total(weights, 5) * Total(counts, at);
    Oi = comp(frames[1], 3, at) + length(path[6 * u] - path[2]) + match(words[1], words[u]);
}
