c __FILE__
