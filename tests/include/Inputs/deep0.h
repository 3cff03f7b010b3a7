bottom
