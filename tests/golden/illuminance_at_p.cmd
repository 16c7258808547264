shaderqx -O1 illuminance_at_p.sl
