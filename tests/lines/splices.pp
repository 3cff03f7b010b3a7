

int ab = 1 + 2;
long text "string"   end
  
last
