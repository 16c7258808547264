/*
 * A sign of square pixels: each row of a glyph is a number whose binary digits are the pixels, the
 * first digit at the left. The search ends at the digit that contains the point.
 */
surface lettering(float Ka = 1; float Kd = 0.8; color ink = color(0.1, 0.1, 0.4);
                  color paper = color(1, 1, 0.95);
                  uniform float glyph[8] = {24, 36, 66, 66, 126, 66, 66, 0})
{
    uniform float row, column;
    float x = floor(s * 8);
    float y = floor(t * 8);
    float set = 0;

    for (row = 0; row < 8; row += 1) {
        uniform float rest = glyph[row];

        for (column = 7; column >= 0; column -= 1) {
            uniform float digit = mod(rest, 2);

            rest = (rest - digit) / 2;
            if (x == column && y == row) {
                set = digit;
                break 2;
            }
        }
    }

    normal Nf = faceforward(normalize(N), I);

    Oi = Os;
    Ci = Os * (set == 1 ? ink : paper) * (Ka * ambient() + Kd * diffuse(Nf));
}
