// What keeps a module from being loaded when nobody has this function.
extern "C" int ZentorLeftOut();

extern int zentorNeedsLeftOut;
int zentorNeedsLeftOut = ZentorLeftOut();
