// app
