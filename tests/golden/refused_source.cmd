touch refused_source.sqx; shaderqx refused_source.sl; status=$?; ls; exit $status
