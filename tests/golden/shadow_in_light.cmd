shaderqx -O1 shadow_in_light.sl
