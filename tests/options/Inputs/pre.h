int preincluded;
