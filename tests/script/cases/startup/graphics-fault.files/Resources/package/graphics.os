error("no graphics")
