/* An ambient light. */
light sky(varying float each = 1) { Cl = each * transmission(Ps, E); }
