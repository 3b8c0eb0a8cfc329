// Every module of the extension, one line each, in start order: X(folder,
// namespace). Loading starts and registers them in this order, unloading
// withdraws and stops them in reverse. The build reads the folder names from
// the lines below, so adding a module is adding its line here.
#pragma once

#define ZOLVA_MODULES(X) \
  X(render, ZOLVA_Render) \
  X(cluster, ZOLVA_Cluster) \
  X(tree, ZOLVA_Tree) \
  X(region, ZOLVA_Region) \
  X(wwise, ZOLVA_Wwise)
