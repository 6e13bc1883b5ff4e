return "data by root"
