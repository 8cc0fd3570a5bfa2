; Who is playing, and how the harbour greets: for somebody who has not signed in. See remember.mps.
visitor="marinheiros"
greeting="Bom dia"
