system __STDC__
