shaderqx -E -DBRIGHT -DTWICE=2 preprocess_only.sl && grep -v '^ *$\|^#' preprocess_only.i; ls
