/*
 * The sea: waves of several lengths and directions, each of which moves the points on its crest
 * forward as well as up. They move with time, and long ones are faster.
 */
displacement waves(float Km = 1; uniform float speed = 1; string space = "shader";
                   uniform float heights[4] = {0.1, 0.05, 0.03, 0.01};
                   uniform float lengths[4] = {4, 2.2, 1.3, 0.7};
                   uniform float directions[4] = {0, 30, -45, 80})
{
    point Pstill = transform(space, P);
    vector offset = 0;
    uniform float i;

    for (i = 0; i < 4; i += 1) {
        uniform float number = 2 * PI / lengths[i];
        uniform float angle = radians(directions[i]);
        uniform vector heading = vector(cos(angle), 0, sin(angle));
        float phase = number * (heading . vector Pstill) - speed * time * sqrt(9.81 * number);

        offset += heights[i] * vector(xcomp(heading) * cos(phase), sin(phase),
                                      zcomp(heading) * cos(phase));
    }
    P += Km * vtransform(space, "current", offset);
    N = calculatenormal(P);
}
