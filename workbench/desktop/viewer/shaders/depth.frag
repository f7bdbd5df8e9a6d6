void main() {}
