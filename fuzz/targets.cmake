# vimbo_fuzz(<name> SOURCES ... DEPS ...) per parser; corpus seeds in fuzz/corpus/<name>/.
