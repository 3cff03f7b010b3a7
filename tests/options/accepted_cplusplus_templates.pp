







taken
