plain
