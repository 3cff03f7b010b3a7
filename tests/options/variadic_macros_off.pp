


a [ b
