shaderqx -O1 illuminance_cones.sl
