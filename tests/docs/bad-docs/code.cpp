//! [right]
int right = 1;
//! [right]
//! [changed]
int changed = 2;
//! [changed]
