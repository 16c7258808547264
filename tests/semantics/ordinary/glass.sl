surface glass(float Ks = 1, Kr = 1, Kt = 1, roughness = 0.05, eta = 1.5; string envname = "")
{
    normal Nn = normalize(N);
    vector In = normalize(I);
    normal Nf = faceforward(Nn, In, Nn);
    vector V = -In;
    float kr, kt;
    vector Rfldir, Rfrdir;
    fresnel(In, Nf, (In . Nn < 0) ? 1 / eta : eta, kr, kt, Rfldir, Rfrdir);
    kt = 1 - kr;
    color Crefl = 0, Crefr = 0;
    if (envname != "") {
        Rfldir = vtransform("world", Rfldir);
        Crefl = color environment(envname, Rfldir, "blur", 0.01);
        Rfrdir = vtransform("world", Rfrdir);
        Crefr = color environment(envname, Rfrdir);
    } else {
        if (kr > 0.001)
            Crefl = trace(P, Rfldir);
        if (kt > 0.001)
            Crefr = trace(P, normalize(Rfrdir));
    }
    Oi = 1;
    Ci = Kr * kr * Crefl + Kt * kt * Crefr + Ks * specular(Nf, V, roughness);
}
