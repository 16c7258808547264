/* Plaster: evenly scattered light. */
surface wall(float Kd = 0.8)
{
    Oi = 1;
    Ci = Cs * Kd * (diffuse(faceforward(normalize(N), I)) + ambient());
}
