shaderqx -O1 environment_forms.sl
