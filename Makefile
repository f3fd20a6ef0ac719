# The two commands of the README. Everything else lives in scripts/.
.PHONY: demo test

demo:
	scripts/demo

test:
	scripts/test
