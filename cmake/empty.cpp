// Keeps a layer without sources linkable.
