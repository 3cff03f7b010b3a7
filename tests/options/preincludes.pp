int preincluded;


1
