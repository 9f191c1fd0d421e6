# vimbo_bench(<name> SOURCES ... DEPS ...) per benchmark program.
