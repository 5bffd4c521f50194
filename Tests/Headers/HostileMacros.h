// Names that platform and toolkit headers define as macros. A host may include those headers before ours.
#define min(a, b) ((a) < (b) ? (a) : (b))
#define max(a, b) ((a) > (b) ? (a) : (b))
#define small char
#define signals public
#define slots
#define emit
