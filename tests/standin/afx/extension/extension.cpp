// The module holds resources alone.
