#include "TreeState.h"

TreeState treeState;
