

good2
good3
good4
