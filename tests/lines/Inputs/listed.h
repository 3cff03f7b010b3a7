int in_header;
