// Walkers of the test model, made by the same reading as those of the real ones.
#include "test_model.h"

#define OC_TRAITS                                                                                                      \
    { .s = ocoptical::side::high, .ns = TEST_NS }
#include "engine/readings/nodes_ox.inc"
