








taken
