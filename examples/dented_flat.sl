/* Dents of three sizes, as in a sheet that has been thrown about. */
displacement dented_flat(float Km = 0.1; float frequency = 2)
{
    point Pshader = transform("shader", P) * frequency;
    float size1 = abs(0.5 - noise(Pshader));
    float size2 = abs(0.5 - noise(Pshader * 2)) / 2;
    float size3 = abs(0.5 - noise(Pshader * 4)) / 4;
    float depth = pow(size1 + size2 + size3, 3);

    P -= Km * depth * normalize(N);
    N = calculatenormal(P);
}
