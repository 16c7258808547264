/*
 * A wall of bricks in mortar. Every second course is shifted by half a brick, each brick has a
 * different shade, and the edges are as soft as a shading point is large.
 */
surface brick(float Ka = 1; float Kd = 0.9; float across = 4; float up = 10; float joint = 0.08;
              float shades = 0.5; color brickcolor = color(0.6, 0.25, 0.15);
              color mortarcolor = color(0.5, 0.5, 0.5))
{
    float column = s * across;
    float row = t * up;
    float course = floor(row);

    if (mod(course, 2) == 1)
        column += 0.5;

    float which = floor(column);
    float ss = column - which;
    float tt = row - course;

    /* Joints are equally thick in both directions, although bricks are longer than high. */
    float jointS = joint * across / up;
    float inside = filterstep(jointS, ss) * filterstep(joint, tt);
    float shade = 1 + shades * (float cellnoise(which, course) - 0.5);

    normal Nf = faceforward(normalize(N), I);

    Oi = Os;
    Ci = Os * mix(mortarcolor, brickcolor * shade, inside) * (Ka * ambient() + Kd * diffuse(Nf));
}
